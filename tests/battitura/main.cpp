// The typist: types pieces of real pages and compares what stands then with what was typed.

#include "Brani.h"
#include "Dattilografo.h"

#include "app/Impostazioni.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace
{

struct Conto {
    int tutti = 0;
    int giusti = 0;
    int rientri = 0; ///< wrong only in the white space at the start of lines
};

QString SenzaRientri(const QString &testo)
{
    QStringList righe = testo.split(u'\n');
    for (QString &riga : righe)
        riga = riga.trimmed();
    return righe.join(u'\n');
}

} // namespace

int main(int argc, char **argv)
{
    QApplication applicazione(argc, argv);
    QCommandLineParser riga;
    riga.addOptions(
        {{u"whole"_s, u"the files hold pieces, with a NUL between two"_s},
         {u"pieces"_s, u"pieces of each file"_s, u"N"_s, u"3"_s},
         {u"data"_s, u"folder of the program's data"_s, u"folder"_s},
         {u"show"_s, u"print so many pieces that came out wrong, of each way of typing"_s, u"N"_s, u"3"_s}});
    riga.addPositionalArgument(u"files"_s, u"pages"_s);
    riga.addHelpOption();
    riga.process(applicazione);
    ModuloDichiarazioni::ImpostaCartellaProgramma(riga.value(u"data"_s));
    (void)ModuloPrincipale::CaricaLingua(riga.value(u"data"_s), ModuloPrincipale::LinguaInglese);

    QStringList brani;
    for (const QString &nome : riga.positionalArguments()) {
        QFile file(nome);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        if (riga.isSet(u"whole"_s))
            brani += QString::fromUtf8(file.readAll()).split(QChar(0));
        else
            brani += Brani::DaPagina(QString::fromUtf8(file.readAll()), riga.value(u"pieces"_s).toInt());
    }
    brani.removeDuplicates();

    QTextStream fuori(stdout);
    Dattilografo dattilografo;
    bool tuttoGiusto = true;
    for (const auto ritmo : {Dattilografo::Ritmo::Lento, Dattilografo::Ritmo::Rapido, Dattilografo::Ritmo::Accavallato,
                             Dattilografo::Ritmo::Elenchi}) {
        Conto conto;
        int mostrati = riga.value(u"show"_s).toInt();
        for (const QString &brano : std::as_const(brani)) {
            const QString scritto = dattilografo.Scrivi(brano, ritmo, u"<body>\r\n"_s, u"\r\n</body>"_s);
            const QString atteso = Brani::Uguagliato(brano);
            const QString avuto = Brani::Uguagliato(scritto);
            const QString annulla = dattilografo.AnnullaERipristina();
            ++conto.tutti;
            if (avuto == atteso && annulla.isEmpty()) {
                ++conto.giusti;
                continue;
            }
            conto.rientri += SenzaRientri(avuto) == SenzaRientri(atteso) && annulla.isEmpty();
            if (mostrati-- > 0)
                fuori << "--- typed\n" << brano << "\n--- stands\n" << scritto << "\n--- " << annulla << "\n";
        }
        fuori << Dattilografo::NomeDi(ritmo) << ": " << conto.giusti << " of " << conto.tutti << " right, "
              << conto.rientri << " wrong in indentation only\n";
        fuori.flush();
        tuttoGiusto = tuttoGiusto && conto.giusti == conto.tutti;
    }
    return tuttoGiusto ? 0 : 1;
}
