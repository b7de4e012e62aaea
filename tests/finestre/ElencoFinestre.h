#pragma once

#include <QList>
#include <QString>

#include <functional>

class FrmStart;
class QWidget;

/// Every window of the program, opened as the program opens it.
namespace ElencoFinestre
{

/// What is done with a window while it is open. \a nome: of the window, with what tells it from others of its kind.
using Guarda = std::function<void(QWidget &finestra, const QString &nome)>;

struct Finestra {
    const char16_t *nome;
    /// Opens it over the main window, hands it to the second argument, and closes it.
    void (*apri)(FrmStart &principale, const Guarda &guarda);
    bool escape = true; ///< Escape closes it
    bool nostra = true; ///< false: of Qt's making; its layout is not ours to judge
};

/// One line for each window: a new window adds its own.
[[nodiscard]] const QList<Finestra> &Tutte();

/// Puts the program into a folder of its own: settings, recovery files. Call before the application object is made.
void Isola(const QString &cartella);

/// Texts of the language \a codice from \a cartella, those of Qt's own windows too. False when they are not there.
[[nodiscard]] bool ImpostaLingua(const QString &cartella, quint8 codice);

/// A main window of 1280 by 720 pixels with the page \a file, on the screen.
class Principale
{
public:
    explicit Principale(const QString &file);
    ~Principale();
    Q_DISABLE_COPY_MOVE(Principale)
    [[nodiscard]] FrmStart &Finestra() { return *m_finestra; }

private:
    FrmStart *m_finestra;
};

} // namespace ElencoFinestre
