#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "html/ElencoRisultati.h"
#include "platform/RichTextBox.h"

/// Keeps a list of faults in line with the control that holds their page.
class SeguitoPagina : public QObject, private ModuloVerificaSintassi::PaginaVista
{
    Q_OBJECT

public:
    /// \a elenco outlives this object; it is emptied.
    SeguitoPagina(const RichTextBox &editor, ElencoRisultati &elenco);
    ~SeguitoPagina() override;

    [[nodiscard]] bool Segue(const RichTextBox &editor) const { return m_editor == &editor; }
    /// Takes in what has changed; happens by itself when the events that are under way have been handled.
    void Aggiorna();
    /// A check has looked at \a quanti units from \a da on.
    void Controllata(int da, int quanti);
    /// A check of the page begins.
    void Prepara();
    /// It has ended and found \a trovati in the first \a fino units of the page as it was then.
    void Concludi(ElencoRisultati::Falli trovati, qsizetype fino);

private:
    [[nodiscard]] qsizetype Lunghezza() const override;
    [[nodiscard]] QChar Unita(qsizetype posizione) const override;
    [[nodiscard]] QString Parte(qsizetype da, qsizetype quanti) const override;
    [[nodiscard]] bool Segnata(qsizetype posizione) const override;
    [[nodiscard]] int Riga(qsizetype posizione) const override;
    [[nodiscard]] std::pair<qsizetype, qsizetype> LimitiRiga(qsizetype posizione) const override;
    [[nodiscard]] int NumeroRighe() const override;

    QPointer<const RichTextBox> m_editor;
    ElencoRisultati &m_elenco;
    ModuloVerificaSintassi::Cambiamento m_cambiamento;
    QTimer m_attesa;
};
