#include "chrome/ModuloGrafica.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto Permesso = "chiusuraPermessa";

/// Refuses to close a form and the inner window that it stands in.
class GuardiaChiusura : public QObject
{
public:
    explicit GuardiaChiusura(QWidget &form) : QObject(&form), m_form(&form)
    {
        setObjectName(u"GuardiaChiusura"_s);
        form.installEventFilter(this);
        Applica();
    }

    bool eventFilter(QObject *chi, QEvent *evento) override
    {
        if (evento->type() == QEvent::Close && !m_form->property(Permesso).toBool()) {
            evento->ignore();
            return true;
        }
        if (evento->type() == QEvent::ParentChange && chi == m_form)
            Applica();
        return QObject::eventFilter(chi, evento);
    }

private:
    void Applica()
    {
        auto *interna = qobject_cast<QMdiSubWindow *>(m_form->parentWidget());
        if (!interna) {
            if (m_form->isWindow())
                TogliPulsante(*m_form);
            return;
        }
        interna->removeEventFilter(this);
        interna->installEventFilter(this);
        if (QMenu *menu = interna->systemMenu()) {
            for (QAction *voce : menu->actions()) {
                if (voce->shortcuts().contains(QKeySequence(QKeySequence::Close)))
                    menu->removeAction(voce);
            }
        }
        TogliPulsante(*interna);
    }

    static void TogliPulsante(QWidget &finestra)
    {
        const Qt::WindowFlags prima = finestra.windowFlags();
        Qt::WindowFlags dopo = prima & ~Qt::WindowCloseButtonHint;
        if (!(prima & Qt::CustomizeWindowHint))
            dopo |=
                Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint;
        if (dopo == prima)
            return;
        const bool visibile = finestra.isVisible();
        finestra.setWindowFlags(dopo);
        if (visibile)
            finestra.show(); // changed flags hide the window
    }

    QWidget *m_form;
};

QObject *Guardia(const QWidget &form)
{
    return form.findChild<QObject *>(u"GuardiaChiusura"_s, Qt::FindDirectChildrenOnly);
}

} // namespace

void ModuloGrafica::RimuoviChiudi(QWidget &form)
{
    if (!Guardia(form))
        new GuardiaChiusura(form);
}

bool ModuloGrafica::Chiudi(QWidget &form)
{
    auto *interna = qobject_cast<QMdiSubWindow *>(form.parentWidget());
    form.setProperty(Permesso, true);
    const QPointer<QWidget> viva(&form);
    const bool chiusa = interna ? interna->close() : form.close();
    if (viva)
        viva->setProperty(Permesso, {});
    return chiusa;
}
