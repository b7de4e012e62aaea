#pragma once

#include <QPoint>
#include <QUrl>
#include <QtPlugin>

#include <functional>
#include <memory>

class QWidget;

/// What a page of the preview asks for.
struct RichiestaMotore {
    enum class Tipo {
        Pagina,    ///< the page itself
        Cornice,   ///< a frame, or the content of an object element
        Risorsa,   ///< a picture or medium that the page names
        Stile,     ///< a style sheet
        Carattere, ///< a font
        Script,    ///< a script that the page names
        Contenuto  ///< bytes that a script would get to read, and everything else
    };

    QUrl indirizzo; ///< local ones are file addresses
    Tipo tipo = Tipo::Contenuto;
    bool daRemoto = false; ///< a page from elsewhere, in a frame, asks for it
};

/// Whom a browser engine serves. Called on the user-interface thread only.
class OspiteMotore
{
public:
    virtual ~OspiteMotore() = default;

    [[nodiscard]] virtual bool Concede(const RichiestaMotore &richiesta) const = 0;
    /// The navigation asked for last came to its end, whether or not the page could be shown.
    virtual void NavigazioneFinita() = 0;
    /// The process that draws the page is gone; the next navigation starts another.
    virtual void DisegnoPerduto() = 0;
    /// The title of the page; empty when it has none.
    virtual void TitoloCambiato(const QString &titolo) = 0;
    /// The link under the mouse; empty when there is none.
    virtual void CollegamentoIndicato(const QUrl &indirizzo) = 0;
    /// The user clicked a link.
    virtual void CollegamentoScelto(const QUrl &indirizzo) = 0;
    /// A mouse button was released over the page, or the page got the keyboard focus.
    virtual void PaginaToccata() = 0;
    /// The user asked for the context menu, at that place on the screen.
    virtual void MenuChiesto(QPoint dove) = 0;
    /// The page makes the program keep too much for it.
    virtual void MemoriaSuperata() = 0;
};

/// What pages may do, by the user's choice.
struct PermessiAnteprima {
    bool script = true; ///< run scripts
    bool rete = true;   ///< load from the web

    bool operator==(const PermessiAnteprima &) const = default;
};

/// A browser engine with one page, behind an interface so that the program neither links nor loads the engine before it
/// is needed. It keeps nothing on disk, asks the user nothing and never takes the keyboard focus.
class MotoreAnteprima
{
public:
    virtual ~MotoreAnteprima() = default;

    /// Shows the local file \a percorso as if it lay at the absolute path \a posto: from there its relative addresses
    /// are resolved. \a codifica is the encoding of a page that declares none. The same place again keeps the scroll
    /// position. Returns at once; a navigation under way is given up.
    virtual void Naviga(const QString &percorso, const QString &posto, const QString &codifica) = 0;
    /// Drops the page together with the process that draws it. Nothing is shown until the next navigation.
    virtual void Ricomincia() = 0;
    /// What the next navigation may do.
    virtual void Permetti(const PermessiAnteprima &permessi) = 0;
    /// Calls \a risposta when the process that draws the page is free to answer: never, when a script keeps it busy.
    virtual void Interroga(std::function<void()> risposta) = 0;
};

/// What the engine's module exports.
class FabbricaMotore
{
public:
    virtual ~FabbricaMotore() = default;

    /// The engine's view fills \a contenitore and is owned by it; \a ospite outlives the engine.
    [[nodiscard]] virtual std::unique_ptr<MotoreAnteprima> Crea(OspiteMotore &ospite, QWidget &contenitore) = 0;
};

Q_DECLARE_INTERFACE(FabbricaMotore, "velloro.FabbricaMotore/3")
