#include "dialogs/FrmVaiARiga.h"

#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"
#include "dialogs/Pezzi.h"

#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

// A plain spin box refuses each digit that leads past its range: 99999 in a page of 93 lines would stand as 9.
class CasellaRiga : public QSpinBox
{
public:
    using QSpinBox::QSpinBox;

protected:
    QValidator::State validate(QString &testo, int & /*posizione*/) const override
    {
        if (testo.isEmpty())
            return QValidator::Intermediate;
        const bool cifre = std::all_of(testo.cbegin(), testo.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
        return cifre ? QValidator::Acceptable : QValidator::Invalid;
    }

    int valueFromText(const QString &testo) const override
    {
        bool piccolo = false;
        const int valore = testo.toInt(&piccolo);
        return piccolo ? std::clamp(valore, minimum(), maximum()) : maximum();
    }
};

} // namespace

FrmVaiARiga::FrmVaiARiga(int corrente, int righe, QWidget *parent) : QDialog(parent), m_riga(new CasellaRiga(this))
{
    setObjectName(u"FrmVaiARiga"_s);
    setWindowTitle(Messaggio(215));
    m_riga->setObjectName(u"TxtRiga"_s);
    m_riga->setRange(1, righe);
    m_riga->setKeyboardTracking(false);
    m_riga->setValue(corrente);
    auto *titolo = new QLabel(Messaggio(214).arg(righe), this);
    titolo->setBuddy(m_riga);
    const Pezzi::Pulsanti pulsanti = Pezzi::CreaPulsanti(this, 314);
    connect(pulsanti.conferma, &QPushButton::clicked, this, &QDialog::accept);
    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(12, 12, 12, 12);
    colonna->setSpacing(8);
    colonna->addWidget(titolo);
    colonna->addWidget(m_riga);
    colonna->addLayout(pulsanti.riga);
    colonna->setSizeConstraint(QLayout::SetFixedSize);
    ModuloGrafica::Decora(*this);
    m_riga->setFocus();
    m_riga->selectAll();
}

int FrmVaiARiga::Riga() const
{
    return m_riga->value();
}
