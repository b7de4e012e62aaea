#include "app/ModuloDichiarazioni.h"
#include "bench/BancoBattitura.h"
#include "bench/BancoControllo.h"
#include "bench/Misura.h"
#include "bench/Tabella.h"
#include "html/ModuloTag.h"

#include <cstdio>
#include <functional>

#include <QApplication>
#include <QCommandLineParser>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace
{

struct Prova {
    QString nome;
    std::function<double(BancoControllo &)> misura;
};

std::vector<Prova> Prove()
{
    std::vector<Prova> prove{
        {u"page put in until painted"_s, [](BancoControllo &b) { return b.Apertura(); }},
        {u"all tags coloured until painted"_s, [](BancoControllo &b) { return b.Colori(); }},
    };
    const std::pair<BancoControllo::Tasto, QString> tasti[] = {{BancoControllo::Lettera, u"letter typed"_s},
                                                               {BancoControllo::Invio, u"Enter"_s},
                                                               {BancoControllo::Cancella, u"Backspace"_s},
                                                               {BancoControllo::Freccia, u"caret moved"_s}};
    const std::pair<BancoControllo::Posto, QString> posti[] = {{BancoControllo::Inizio, u"at the start"_s},
                                                               {BancoControllo::Mezzo, u"in the middle"_s},
                                                               {BancoControllo::Fine, u"at the end"_s}};
    for (const auto &[tasto, nomeTasto] : tasti) {
        for (const auto &[posto, nomePosto] : posti)
            prove.push_back(
                {nomeTasto + u' ' + nomePosto, [t = tasto, p = posto](BancoControllo &b) { return b.Preme(t, p); }});
    }
    prove.push_back({u"whole text after a change"_s, [](BancoControllo &b) { return b.TestoDopoUnTasto(); }});
    prove.push_back({u"search to the end"_s, [](BancoControllo &b) { return b.Ricerca(); }});
    prove.push_back({u"TextRTF, first"_s, [](BancoControllo &b) { return b.RtfIntero(); }});
    prove.push_back({u"TextRTF, one line changed"_s, [](BancoControllo &b) { return b.RtfDopoUnaRiga(); }});
    prove.push_back({u"TextRTF set, one line differs"_s, [](BancoControllo &b) { return b.ImpostaRtfDiUnaRiga(); }});
    prove.push_back({u"undo record of one line"_s, [](BancoControllo &b) { return b.Registrazione(); }});
    prove.push_back({u"undo of one line"_s, [](BancoControllo &b) { return b.Annullamento(); }});
    prove.push_back({u"redo of one line"_s, [](BancoControllo &b) { return b.Ripristino(); }});
    prove.push_back({u"Replace All of a letter"_s, [](BancoControllo &b) { return b.SostituisciTutto(); }});
    prove.push_back({u"undo of Replace All"_s, [](BancoControllo &b) { return b.AnnullaSostituisciTutto(); }});
    prove.push_back({u"scan and lookups, no widget"_s, [](BancoControllo &b) { return b.Scansione(); }});
    prove.push_back({u"full check with colours"_s, [](BancoControllo &b) { return b.Verifica(); }});
    prove.push_back({u"check of the tag at the caret"_s, [](BancoControllo &b) { return b.VerificaTag(); }});
    prove.push_back({u"check of the tag at the caret, 20,000 findings"_s,
                     [](BancoControllo &b) { return b.VerificaTagConElenco(); }});
    return prove;
}

struct ProvaMemoria {
    QString nome;
    std::function<double(int)> misura; ///< of a column
};

const std::vector<ProvaMemoria> &ProveMemoria()
{
    static const std::vector<ProvaMemoria> prove{
        {u"memory of the control"_s, &BancoControllo::Memoria},
        {u"10,000 undo records in one place"_s,
         [](int colonna) { return BancoControllo::MemoriaRegistrazioni(colonna, false); }},
        {u"10,000 undo records scattered"_s,
         [](int colonna) { return BancoControllo::MemoriaRegistrazioni(colonna, true); }},
    };
    return prove;
}

// Memory that an earlier page gave back would hide what the next one takes, so each has a process of its own.
std::optional<double> MemoriaDi(size_t prova, size_t colonna)
{
    QProcess processo;
    processo.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    processo.start(QCoreApplication::applicationFilePath(), {u"--memory-of"_s, u"%1,%2"_s.arg(prova).arg(colonna)});
    if (!processo.waitForFinished(120'000) || processo.exitCode() != 0)
        return std::nullopt;
    bool valido = false;
    const double valore = processo.readAllStandardOutput().trimmed().toDouble(&valido);
    return valido ? std::optional(valore) : std::nullopt;
}

/// One column: what each key costs on \a pagina; nothing where that is empty.
void MisuraBattute(const std::vector<BancoBattitura::Prova> &prove, const QString &pagina,
                   std::vector<std::vector<std::optional<double>>> &tempi)
{
    const auto banco = prove.empty() || pagina.isEmpty() ? nullptr : std::make_unique<BancoBattitura>(pagina);
    for (size_t j = 0; j < prove.size(); ++j)
        tempi[j].push_back(banco ? std::optional(banco->Misura(prove[j])) : std::nullopt);
}

void Stampa(const QString &testo)
{
    std::fputs(testo.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication applicazione(argc, argv);
    QCommandLineParser opzioni;
    opzioni.setApplicationDescription(u"Measures the editing control and prints a table."_s);
    opzioni.addHelpOption();
    const QCommandLineOption processore(u"cpu"_s,
                                        u"Measure processor time, not the clock: for a machine that is busy."_s);
    const QCommandLineOption filtro(u"only"_s, u"Only the rows whose name contains TEXT."_s, u"TEXT"_s);
    const QCommandLineOption colonna(u"size"_s, u"Only the columns whose name contains TEXT."_s, u"TEXT"_s);
    QCommandLineOption memoria(u"memory-of"_s, QString(), u"ROW,COLUMN"_s);
    memoria.setFlags(QCommandLineOption::HiddenFromHelp);
    const QCommandLineOption pagina(u"write-page"_s, u"Write a page of UNITS characters to the output and end."_s,
                                    u"UNITS"_s);
    opzioni.addOptions({processore, filtro, colonna, memoria, pagina});
    opzioni.process(applicazione);

    if (opzioni.isSet(pagina)) {
        Stampa(Pagine::Html(opzioni.value(pagina).toLongLong()));
        return 0;
    }
    if (opzioni.isSet(memoria)) {
        const QStringList quale = opzioni.value(memoria).split(u',');
        const size_t prova = std::min(quale.first().toULong(), ProveMemoria().size() - 1);
        const size_t dove = std::min(quale.last().toULong(), Colonne().size() - 1);
        Stampa(QString::number(ProveMemoria()[prova].misura(int(dove))) + u'\n');
        return 0;
    }
    ModuloDichiarazioni::ImpostaCartellaProgramma(QCoreApplication::applicationDirPath() + u"/../bin"_s);
    QApplication::setCursorFlashTime(0);
    if (!ModuloTag::CaricaTag(ModuloDichiarazioni::CartellaProgramma() + u"/tag html.db"_s).Riuscito())
        qFatal("no knowledge base beside the program");
    Orologio::diProcessore = opzioni.isSet(processore);

    std::vector<Prova> prove = Prove();
    std::erase_if(prove, [&](const Prova &prova) { return !prova.nome.contains(opzioni.value(filtro)); });
    std::vector<std::vector<std::optional<double>>> tempi(prove.size());
    std::vector<BancoBattitura::Prova> battute = BancoBattitura::Prove();
    std::erase_if(battute, [&](const auto &prova) { return !prova.nome.contains(opzioni.value(filtro)); });
    std::vector<std::vector<std::optional<double>>> tempiBattute(battute.size());
    std::vector<std::vector<std::optional<double>>> memorie(ProveMemoria().size());
    const auto misuraMemoria = [&](size_t prova) { return ProveMemoria()[prova].nome.contains(opzioni.value(filtro)); };
    QStringList nomi;
    for (size_t i = 0; i < Colonne().size(); ++i) {
        const Colonna &questa = Colonne()[i];
        nomi += questa.nome;
        const bool misura = questa.nome.contains(opzioni.value(colonna));
        if (prove.empty() || !misura) {
            for (auto &righe : tempi)
                righe.push_back(std::nullopt);
        } else {
            BancoControllo banco;
            banco.Prepara(PaginaDi(questa));
            for (size_t j = 0; j < prove.size(); ++j)
                tempi[j].push_back(prove[j].misura(banco));
        }
        MisuraBattute(battute, misura && !questa.rigaSola ? PaginaDi(questa) : QString(), tempiBattute);
        for (size_t j = 0; j < memorie.size(); ++j) {
            // Ten thousand records scattered over a page without room for them are nobody's work.
            memorie[j].push_back(misura && misuraMemoria(j) && (j == 0 || questa.nome == u"1 MB"_s) ? MemoriaDi(j, i)
                                                                                                    : std::nullopt);
        }
    }

    Tabella tabella(u"Editing control, %1, medians (%2)"_s.arg(Orologio::diProcessore ? u"processor time"_s : u"time"_s,
                                                               QGuiApplication::platformName()),
                    nomi, {{3, 2}, {6, 5}});
    for (size_t j = 0; j < prove.size(); ++j)
        tabella.Riga(prove[j].nome, u"ms"_s, tempi[j]);
    for (size_t j = 0; j < battute.size(); ++j)
        tabella.Riga(battute[j].nome, u"ms"_s, tempiBattute[j]);
    for (size_t j = 0; j < memorie.size(); ++j) {
        if (misuraMemoria(j))
            tabella.Riga(ProveMemoria()[j].nome, u"MB"_s, memorie[j]);
    }
    Stampa(tabella.Testo());
    return 0;
}
