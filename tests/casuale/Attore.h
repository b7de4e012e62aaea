#pragma once

#include "Passo.h"

#include <QPoint>
#include <QPointer>

class FrmStart;
class Giudice;
class QWidget;
class QWindow;

/// Does the steps as the window system would: keys go to the window that has them, the mouse to what lies under it.
class Attore
{
public:
    /// \a cartella: full path of the folder with the pages.
    Attore(FrmStart &finestra, Giudice &giudice, const QString &cartella);

    void Esegui(const Passo &passo);
    /// The open menu, list or dialog that is in front of the main window; null when there is none.
    [[nodiscard]] static QWidget *Ostacolo();
    /// Another try to get rid of the obstacle: Escape, its close button and its own buttons in turn.
    void Congeda(int tentativo);

private:
    void Recinta() const;
    void Tasto(const Passo &passo) const;
    void Batti(const QString &testo, bool sovrapposti) const;
    void Mouse(const Passo &passo) const;
    void Rotella(const Passo &passo) const;
    void Componi(const QString &testo) const;
    void Comando(const QString &nome) const;
    void Voce(const QString &nome) const;
    void Figlio(int quale) const;
    void Chiudi(int come, int quale) const;
    void NomeFile(const QString &nome) const;
    void Lascia(const Passo &passo) const;
    void Misura(const Passo &passo) const;
    void Scegli(const Passo &passo) const;
    void ScriviDopo(const Passo &passo) const;
    [[nodiscard]] QWidget *Davanti() const;
    [[nodiscard]] QWidget *Luogo(const QString &nome) const;
    [[nodiscard]] QWindow *FinestraTasti() const;

    FrmStart &m_finestra;
    Giudice &m_giudice;
    QString m_cartella;
};
