#pragma once

#include <QDialog>

#include "platform/Registro.h"

class QLabel;
class QLayout;

/// The About box: the program's title and version, what it is, under whose name the system is registered, and the
/// button that starts the system information tool.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent = nullptr);

    /// Starts the system information tool that the registry names; a message tells when there is none, or when it does
    /// not start.
    void StartSysInfo();

    /// Reads the text value \a SubKeyRef of the key \a KeyName below \a KeyRoot into \a KeyVal, of at most 1024 bytes
    /// with its terminator. False, and \a KeyVal unchanged, when there is none, when it is longer or is no text.
    [[nodiscard]] static bool GetKeyValue(Registro::HKey KeyRoot, QStringView KeyName, QStringView SubKeyRef,
                                          QString &KeyVal);

private:
    void Crea();
    [[nodiscard]] QLayout *CreaTesti(QWidget *cornice);
    [[nodiscard]] QLayout *CreaPulsanti();
    void Riempi();

    QLabel *m_titolo = nullptr;
    QLabel *m_versione = nullptr;
    QLabel *m_utente = nullptr;
    QLabel *m_avvertenza = nullptr;
    QLabel *m_descrizione = nullptr;
};
