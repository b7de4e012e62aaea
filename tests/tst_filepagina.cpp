#include "platform/FilePagina.h"

#include "platform/File_System.h"
#include "platform/NomiFile.h"
#include "Aiuti.h"
#include "Colonne.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace ModuloPrincipale;

namespace
{

/// While it lives, the process has no more rights than an ordinary user.
class UtenteComune
{
public:
    UtenteComune() : m_prima(geteuid())
    {
        if (m_prima == 0 && seteuid(Nessuno) != 0)
            qFatal("the rights of the test could not be lowered");
    }
    ~UtenteComune()
    {
        if (m_prima == 0 && seteuid(m_prima) != 0)
            qFatal("the rights of the test could not be restored");
    }
    Q_DISABLE_COPY_MOVE(UtenteComune)
    static constexpr uid_t Nessuno = 65534;

private:
    uid_t m_prima;
};

/// While it lives, no file of this process may grow beyond \a byte.
class LimiteFile
{
public:
    explicit LimiteFile(rlim_t byte)
    {
        m_segnale = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_prima);
        const rlimit stretto{byte, m_prima.rlim_max};
        setrlimit(RLIMIT_FSIZE, &stretto);
    }
    ~LimiteFile()
    {
        setrlimit(RLIMIT_FSIZE, &m_prima);
        std::signal(SIGXFSZ, m_segnale);
    }
    Q_DISABLE_COPY_MOVE(LimiteFile)

private:
    rlimit m_prima{};
    void (*m_segnale)(int);
};

void Permessi(const QString &percorso, mode_t modo)
{
    QCOMPARE(chmod(QFile::encodeName(percorso).constData(), modo), 0);
}

struct stat Stato(const QString &percorso)
{
    struct stat dati = {};
    stat(QFile::encodeName(percorso).constData(), &dati);
    return dati;
}

} // namespace

class TstFilePagina : public QObject
{
    Q_OBJECT

private slots:
    // Another program may save while the new bytes are on their way: then the old file stays.
    void lastLook()
    {
        const QString file = m_cartella->filePath(u"ultima.html"_s);
        FormatoPagina formato;
        for (const bool ancora : {false, true}) {
            Aiuti::Scrivi(file, "prima");
            const RisultatoScrittura esito = ScriviTesto(u"mia", file, formato, [&] {
                Aiuti::Scrivi(file, "altrui");
                return ancora;
            });
            QCOMPARE(esito.esito, ancora ? EsitoScrittura::Scritto : EsitoScrittura::Cambiato);
            QCOMPARE(Aiuti::Contenuto(file), ancora ? QByteArray("mia\r\n") : QByteArray("altrui"));
        }
    }

    void init()
    {
        m_cartella = std::make_unique<QTemporaryDir>();
        QVERIFY(m_cartella->isValid());
        Permessi(m_cartella->path(), 0755);
    }

    void pageComesBack()
    {
        const QByteArray byte = "<meta charset=euc-jp>\r\n\xC6\xFC\xCB\xDC\r\n";
        const QString nome = u"prova è 你 #%20?.html"_s;
        Metti(nome, byte);
        QString testo = u"vecchio"_s;
        FormatoPagina formato;
        QVERIFY(LeggiFile(In(nome), testo, &formato));
        QCOMPARE(testo, u"<meta charset=euc-jp>\r\n日本\r"_s);
        QVERIFY(ScriviTesto(testo, In(nome), formato));
        QCOMPARE(Byte(nome), byte);
        QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void unreadablePaths_data()
    {
        Colonne<QString, EsitoLettura>({"nome", "esito"});
        QTest::newRow("missing") << u"manca.html"_s << EsitoLettura::Inesistente;
        QTest::newRow("folder") << u"cartella"_s << EsitoLettura::Cartella;
        QTest::newRow("pipe") << u"tubo"_s << EsitoLettura::NonRegolare;
        QTest::newRow("link to a device") << u"infinito"_s << EsitoLettura::NonRegolare;
        QTest::newRow("no right") << u"segreto"_s << EsitoLettura::NonLeggibile;
        QTest::newRow("huge") << u"enorme"_s << EsitoLettura::TroppoGrande;
    }

    void unreadablePaths()
    {
        QFETCH(QString, nome);
        QFETCH(EsitoLettura, esito);
        QVERIFY(QDir().mkdir(In(u"cartella"_s)));
        QCOMPARE(mkfifo(QFile::encodeName(In(u"tubo"_s)).constData(), 0666), 0);
        QVERIFY(QFile::link(u"/dev/zero"_s, In(u"infinito"_s)));
        Metti(u"segreto"_s, "x");
        Permessi(In(u"segreto"_s), 0);
        Metti(u"enorme"_s, "x");
        QVERIFY(QFile::resize(In(u"enorme"_s), MassimoPagina + 1));

        const UtenteComune utente;
        QString testo = u"vecchio"_s;
        const RisultatoLettura risultato = LeggiPagina(In(nome), testo);
        QCOMPARE(risultato.esito, esito);
        QCOMPARE(testo, QString());
        QCOMPARE(risultato.motivo.isEmpty(), esito != EsitoLettura::NonLeggibile);
    }

    void emptyTextTouchesNothing()
    {
        Metti(u"a.html"_s, "vecchia");
        QCOMPARE(Scrivi({}, u"a.html"_s).esito, EsitoScrittura::NienteDaScrivere);
        QCOMPARE(Byte(u"a.html"_s), "vecchia");
        QCOMPARE(Scrivi({}, u"b.html"_s).esito, EsitoScrittura::NienteDaScrivere);
        QVERIFY(!QFile::exists(In(u"b.html"_s)));
        QVERIFY(Scrivi(u"\r", u"b.html"_s));
        QCOMPARE(Byte(u"b.html"_s), "\r\n");
    }

    void formatFollowsTheFile()
    {
        FormatoPagina formato;
        RisultatoScrittura risultato = ScriviTesto(u"<meta charset=koi8-r>你", In(u"manca/x"_s), formato);
        QVERIFY(formato.codifica.isEmpty());
        QCOMPARE(risultato.sostituiti, 0);
        risultato = ScriviTesto(u"<meta charset=koi8-r>你", In(u"x"_s), formato);
        QCOMPARE(formato.codifica, u"KOI8-R"_s);
        QCOMPARE(risultato.sostituiti, 1);
        QCOMPARE(Byte(u"x"_s), "<meta charset=koi8-r>&#20320;\r\n");
    }

    void unwritablePaths_data()
    {
        Colonne<QString, EsitoScrittura>({"nome", "esito"});
        QTest::newRow("folder") << u"cartella"_s << EsitoScrittura::Cartella;
        QTest::newRow("pipe") << u"tubo"_s << EsitoScrittura::NonRegolare;
        QTest::newRow("link to a device") << u"pieno"_s << EsitoScrittura::NonRegolare;
        QTest::newRow("folder is gone") << u"manca/x.html"_s << EsitoScrittura::CartellaMancante;
        QTest::newRow("new file in a protected folder") << u"cartella/x.html"_s << EsitoScrittura::NonConsentito;
    }

    void unwritablePaths()
    {
        QFETCH(QString, nome);
        QFETCH(EsitoScrittura, esito);
        QVERIFY(QDir().mkdir(In(u"cartella"_s)));
        Permessi(In(u"cartella"_s), 0555);
        QCOMPARE(mkfifo(QFile::encodeName(In(u"tubo"_s)).constData(), 0666), 0);
        QVERIFY(QFile::link(u"/dev/full"_s, In(u"pieno"_s)));
        Metti(u"file"_s, "x");
        const QStringList prima = QDir(m_cartella->path()).entryList(QDir::AllEntries | QDir::System);

        const UtenteComune utente;
        const RisultatoScrittura risultato = Scrivi(u"nuova", nome);
        QCOMPARE(risultato.esito, esito);
        QVERIFY(!risultato);
        QCOMPARE(QDir(m_cartella->path()).entryList(QDir::AllEntries | QDir::System), prima);
        QCOMPARE(Byte(u"file"_s), "x");
    }

    void permissionsStay()
    {
        for (const mode_t modo : {0640U, 0666U, 0755U, 0600U}) {
            Metti(u"a.html"_s, "vecchia");
            Permessi(In(u"a.html"_s), modo);
            if (geteuid() == 0)
                QCOMPARE(chown(QFile::encodeName(In(u"a.html"_s)).constData(), UtenteComune::Nessuno, 12345), 0);
            const auto prima = Stato(In(u"a.html"_s));
            QVERIFY(Scrivi(u"nuova", u"a.html"_s));
            const auto dopo = Stato(In(u"a.html"_s));
            QCOMPARE(dopo.st_mode & 07777, modo);
            QCOMPARE(dopo.st_uid, prima.st_uid);
            QCOMPARE(dopo.st_gid, prima.st_gid);
        }
    }

    void writeProtectionHolds()
    {
        Metti(u"a.html"_s, "vecchia");
        Permessi(In(u"a.html"_s), 0444);
        QCOMPARE(Scrivi(u"nuova", u"a.html"_s).esito, EsitoScrittura::SolaLettura);
        QCOMPARE(Byte(u"a.html"_s), "vecchia");
    }

    void linksStay()
    {
        QVERIFY(QDir().mkdir(In(u"altrove"_s)));
        Metti(u"altrove/vera.html"_s, "vecchia");
        QVERIFY(QFile::link(u"vera.html"_s, In(u"altrove/secondo.html"_s)));
        QVERIFY(QFile::link(u"altrove/secondo.html"_s, In(u"primo.html"_s)));
        QVERIFY(Scrivi(u"nuova", u"primo.html"_s));
        QCOMPARE(Byte(u"altrove/vera.html"_s), "nuova\r\n");
        QVERIFY(QFileInfo(In(u"primo.html"_s)).isSymLink());
        QVERIFY(QFileInfo(In(u"altrove/secondo.html"_s)).isSymLink());
        // A link to nothing yet makes its target.
        QVERIFY(QFile::link(u"nuova.html"_s, In(u"pendente.html"_s)));
        QVERIFY(Scrivi(u"nuova", u"pendente.html"_s));
        QCOMPARE(Byte(u"nuova.html"_s), "nuova\r\n");
        QVERIFY(QFileInfo(In(u"pendente.html"_s)).isSymLink());
    }

    void circleOfLinks()
    {
        QVERIFY(QFile::link(u"b.html"_s, In(u"a.html"_s)));
        QVERIFY(QFile::link(u"a.html"_s, In(u"b.html"_s)));
        const RisultatoScrittura risultato = Scrivi(u"nuova", u"a.html"_s);
        QCOMPARE(risultato.esito, EsitoScrittura::Fallito);
        QVERIFY(!risultato.motivo.isEmpty());
    }

    void noRoomLeavesTheOldPage()
    {
        Metti(u"a.html"_s, "vecchia");
        Metti(u"lungo.html"_s, QByteArray(6000, 'v'));
        RisultatoScrittura risultato;
        RisultatoScrittura nuova;
        {
            const LimiteFile limite(4096);
            risultato = Scrivi(QString(10000, u'n'), u"a.html"_s);
            nuova = Scrivi(QString(10000, u'n'), u"b.html"_s);
        }
        QCOMPARE(risultato.esito, EsitoScrittura::DiscoPieno);
        QVERIFY(!risultato.motivo.isEmpty());
        QCOMPARE(nuova.esito, EsitoScrittura::DiscoPieno);
        QCOMPARE(Byte(u"a.html"_s), "vecchia");
        QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{u"a.html"_s, u"lungo.html"_s}));
    }

    // A file that may be written, in a folder that may not: it is overwritten, and a failure leaves the old page.
    void fileInAProtectedFolder()
    {
        QVERIFY(QDir().mkdir(In(u"chiusa"_s)));
        Metti(u"chiusa/a.html"_s, "una vecchia pagina");
        Permessi(In(u"chiusa/a.html"_s), 0666);
        Permessi(In(u"chiusa"_s), 0555);
        const UtenteComune utente;
        QVERIFY(Scrivi(u"nuova", u"chiusa/a.html"_s));
        QCOMPARE(Byte(u"chiusa/a.html"_s), "nuova\r\n");
        QVERIFY(Scrivi(QString(9000, u'n'), u"chiusa/a.html"_s));
        QCOMPARE(Byte(u"chiusa/a.html"_s).size(), 9002);
        RisultatoScrittura risultato;
        {
            const LimiteFile limite(10000);
            risultato = Scrivi(QString(20000, u'x'), u"chiusa/a.html"_s);
        }
        QCOMPARE(risultato.esito, EsitoScrittura::DiscoPieno);
        QCOMPARE(risultato.copiaVecchia, QString());
        QCOMPARE(Byte(u"chiusa/a.html"_s), QByteArray(9000, 'n') + "\r\n");
    }

    // Any bytes but those of "/" and NUL are a name.
    void namesThatAreNoText()
    {
        QByteArray tutti;
        for (int c = 1; c < 256; ++c)
            tutti += c == '/' ? '.' : char(c);
        for (const QByteArray &nome :
             {"caf\xE9.html"_ba, tutti, "\xED\xB3\xA9"_ba, "\xF0\x9F\x98\x80\xE9"_ba, "\xE2\x82"_ba}) {
            const QByteArray cartella = QFile::encodeName(In(u"d"_s)) + '\xFF';
            const QByteArray byte = cartella + '/' + nome;
            mkdir(cartella.constData(), 0755);
            const QString percorso = NomiFile::DaOspite(byte);
            QCOMPARE(NomiFile::PerOspite(percorso), byte);
            QVERIFY(NomiFile::Leggibile(percorso).isValidUtf16() && !File_System::FileEsiste(percorso));
            FormatoPagina formato;
            QString letto;
            QCOMPARE(LeggiPagina(percorso, letto).esito, EsitoLettura::Inesistente);
            for (const QString &testo : {u"prima\r"_s, u"seconda\r"_s}) {
                QVERIFY(ScriviTesto(testo, percorso, formato));
                QVERIFY(LeggiPagina(percorso, letto));
                QCOMPARE(letto, testo);
            }
            QVERIFY(File_System::FileEsiste(percorso));
            QCOMPARE(NomiFile::NonTesto(NomiFile::DaOspite(cartella)), QStringList{NomiFile::DaOspite(nome)});
            QCOMPARE(unlink(byte.constData()), 0);
        }
        rmdir((QFile::encodeName(In(u"d"_s)) + '\xFF').constData());
    }

    void longestName()
    {
        const QString nome = QString(250, u'n') + u".html"_s;
        QVERIFY(Scrivi(u"prima", nome));
        QVERIFY(Scrivi(u"seconda", nome));
        QCOMPARE(Byte(nome), "seconda\r\n");
        QCOMPARE(Scrivi(u"x", nome + u'x').esito, EsitoScrittura::Fallito);
    }

private:
    [[nodiscard]] QString In(const QString &nome) const { return m_cartella->filePath(nome); }

    void Metti(const QString &nome, const QByteArray &byte) const
    {
        QFile file(In(nome));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(byte), byte.size());
    }

    [[nodiscard]] QByteArray Byte(const QString &nome) const
    {
        QFile file(In(nome));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] RisultatoScrittura Scrivi(QStringView testo, const QString &nome) const
    {
        FormatoPagina formato;
        return ScriviTesto(testo, In(nome), formato);
    }

    std::unique_ptr<QTemporaryDir> m_cartella;
};

QTEST_GUILESS_MAIN(TstFilePagina)
#include "tst_filepagina.moc"
