#include "FabbricaWebEngine.h"

#include "MotoreWebEngine.h"
#include "SchemaPagina.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QQuickWindow>

#include <utility>

using namespace Qt::StringLiterals;

// Qt Gui exports it for Qt's own modules; there is no public way to make this context after the application object.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext *contesto);
QT_END_NAMESPACE

namespace
{

/// The engine wants a shared OpenGL context to be there, even where it draws without. The documented attribute would
/// create one whenever the program starts, which takes about as long as all the rest; this one is never created.
void PreparaContesto()
{
    if (!QOpenGLContext::globalShareContext())
        qt_gl_set_global_share_context(new QOpenGLContext(QCoreApplication::instance()));
}

} // namespace

std::unique_ptr<MotoreAnteprima> FabbricaWebEngine::Crea(OspiteMotore &ospite, QWidget &contenitore)
{
    if (!std::exchange(m_preparata, true)) {
        PreparaContesto();
        SchemaPagina::Registra();
    }
    // Pages are drawn without OpenGL: it works on every display, and a widget that draws with it would make Qt create
    // the main window anew, with a flicker, while somebody already types in it.
    if (QQuickWindow::sceneGraphBackend() != u"software")
        QQuickWindow::setSceneGraphBackend(u"software"_s);
    return std::make_unique<MotoreWebEngine>(ospite, contenitore);
}
