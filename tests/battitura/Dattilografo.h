#pragma once

#include <QEvent>
#include <QString>

#include <memory>

class FrmPaginaHTML;
class RichTextBox;
class clsUndo;

/// Types texts into a document window of its own, by press and release of keys.
class Dattilografo
{
public:
    enum class Ritmo {
        Lento,       ///< each key when the page is at rest
        Rapido,      ///< all keys wait in one queue
        Accavallato, ///< each key is pressed before the one before is let go
        Elenchi,     ///< two letters of a name and Tab, where the list shows it
    };

    /// The knowledge base must be in the program's folder.
    Dattilografo();
    ~Dattilografo();

    /// Types \a brano between \a prima and \a dopo, which stand in the page. Gives what stands between the two then.
    [[nodiscard]] QString Scrivi(const QString &brano, Ritmo ritmo, const QString &prima, const QString &dopo);
    /// Undoes to the beginning and redoes to the end; empty when both texts come back, else what was wrong.
    [[nodiscard]] QString AnnullaERipristina();

    [[nodiscard]] static QString NomeDi(Ritmo ritmo);

private:
    void Batti(QChar c);
    void BattiTab();
    void Manda(QEvent::Type tipo, QChar c);
    void FinoAllaQuiete();
    void ConGliElenchi(const QString &brano);
    [[nodiscard]] bool Mostrato(const QString &nome) const;

    std::unique_ptr<FrmPaginaHTML> m_finestra;
    std::unique_ptr<clsUndo> m_undo;
    RichTextBox *m_pad;
    QString m_inizio;
};
