#include "Generatore.h"

#include "app/TabellaComandi.h"

#include <QRandomGenerator>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array Movimenti{Qt::Key_Up,   Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                               Qt::Key_Home, Qt::Key_End,  Qt::Key_Left,   Qt::Key_Right};
constexpr std::array Comuni{Qt::Key_Return,    Qt::Key_Tab,    Qt::Key_Space,  Qt::Key_Escape,
                            Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Backtab};
constexpr std::array Strani{
    Qt::Key_Insert,    Qt::Key_F1,          Qt::Key_F3,    Qt::Key_F10,  Qt::Key_Menu,     Qt::Key_Dead_Acute,
    Qt::Key_Multi_key, Qt::Key_Mode_switch, Qt::Key_AltGr, Qt::Key_Meta, Qt::Key_CapsLock, Qt::Key_unknown,
    Qt::Key_VolumeUp,  Qt::Key_Enter,       Qt::Key_Shift, Qt::Key_Alt,  Qt::Key_Control,  Qt::Key_Dead_Circumflex};
constexpr std::array Modificatori{0,
                                  int(Qt::ShiftModifier),
                                  int(Qt::ControlModifier),
                                  int(Qt::AltModifier),
                                  int(Qt::ShiftModifier | Qt::ControlModifier),
                                  int(Qt::ControlModifier | Qt::AltModifier)};
const QStringList Pezzi =
    QString::fromUtf16(u"<P>|<P align=\"left\">|<TABLE border=1>|<B>testo</B>|<IMG src=\"a.png\"|</P>|<!-- x -->|<BR>|"
                       u"<blinc>|<A href=\"x.html\" target=nowhere>|&egrave;|\r\n|\t|<P align=mid|<SCRIPT>a<b</SCRIPT>|"
                       u"è|日本|\xD83D\xDE00|e\x301|<H1 aline=left>|<TD\r\nwidth=\"5\r\n\">|<p|><|\"|=|--|  |<zz |"
                       u"<IMG al|<TABLE a|\x2029|\xA0|x<y>z|<FONT color=#ff0000 size=+1>|<table>\n<tr>\r<td>")
        .split(u'|');
const QStringList Dialoghi{u"MFont"_s,        u"MenuTabella(0)"_s, u"MenuCollegamenti(0)"_s, u"MenuCollegamenti(1)"_s,
                           u"MenuFile(0)"_s,  u"MenuFile(1)"_s,    u"MenuFile(4)"_s,         u"MenuFile(5)"_s,
                           u"MenuFile(7)"_s,  u"MenuHelp(0)"_s,    u"MenuEdit(10)"_s,        u"MenuEdit(12)"_s,
                           u"MenuFile(11)"_s, u"ToolStandard(1)"_s};
const QStringList Luoghi{u"pagina"_s, u"pagina"_s, u"davanti"_s, u"lista"_s, u"margine"_s, u"risultati"_s};

class Fantasia
{
public:
    explicit Fantasia(quint32 seme) : m_caso(seme) {}

    Passi Inventa(int quanti)
    {
        const QList<Generatore::File> file = Generatore::Cartella();
        if (Uno(4) > 0)
            m_passi += {Passo::Pagina, 0, 0, 0, file[Uno(int(file.size()))].nome};
        while (m_passi.size() < quanti)
            Scena();
        return m_passi;
    }

private:
    int Uno(int di) { return m_caso.bounded(di); }
    template <typename T>
    auto Scelto(const T &elenco)
    {
        return elenco[m_caso.bounded(int(elenco.size()))];
    }
    /// About every second step follows at once, as from quick fingers.
    void Aggiungi(Passo passo)
    {
        passo.subito = m_veloce && Uno(4) > 0;
        m_passi += passo;
    }
    void Premi(int tasto, int modificatori = 0, const QString &testo = {})
    {
        Aggiungi({Passo::Premi, tasto, modificatori, 0, testo});
    }
    void Rilascia(int tasto, int modificatori = 0, const QString &testo = {})
    {
        Aggiungi({Passo::Rilascia, tasto, modificatori, 0, testo});
    }
    void Tasto(int tasto, int modificatori = 0, const QString &testo = {})
    {
        Premi(tasto, modificatori, testo);
        for (int volte = Uno(30) == 0 ? Uno(5) : 0; volte > 0; --volte)
            Aggiungi({Passo::Ripeti, tasto, modificatori, 0, testo});
        Rilascia(tasto, modificatori, testo);
    }
    static int TastoDi(const QString &testo)
    {
        const QChar c = testo.front();
        return c == u'\t' ? int(Qt::Key_Tab) : c == u'\r' ? int(Qt::Key_Return) : c.toUpper().unicode();
    }

    /// As fingers do it: sometimes the next key goes down before the last one is up.
    void Batti(QString testo)
    {
        testo.remove(u'\n');
        QString giu;
        for (qsizetype i = 0; i < testo.size(); ++i) {
            const QString c = testo.mid(i, testo[i].isHighSurrogate() ? 2 : 1);
            i += c.size() - 1;
            const bool maiuscolo = u"<>\"!=/"_s.contains(c) && Uno(3) > 0;
            const int modi = maiuscolo ? int(Qt::ShiftModifier) : 0;
            if (maiuscolo)
                Premi(Qt::Key_Shift, Qt::ShiftModifier);
            Premi(TastoDi(c), modi, c);
            if (!giu.isEmpty())
                Rilascia(TastoDi(giu), modi, giu);
            giu = c;
            if (maiuscolo)
                Rilascia(Qt::Key_Shift);
            if (Uno(5) > 0)
                Rilascia(TastoDi(std::exchange(giu, {})), modi, c);
        }
        if (!giu.isEmpty())
            Rilascia(TastoDi(giu), 0, giu);
    }
    QString Parola()
    {
        static const QString lettere = u"abcdefghilmnopqrstuvzABCxyz0123 àèò.,;:"_s;
        QString parola;
        for (int i = Uno(12); i >= 0; --i)
            parola += Scelto(lettere);
        return parola;
    }
    void Muovi(int volte)
    {
        for (; volte > 0; --volte)
            Tasto(Scelto(Movimenti), Uno(4) == 0 ? Scelto(Modificatori) : 0);
    }
    void Mouse(Passo::Tipo tipo)
    {
        const int bottone = Uno(6) == 0 ? Qt::RightButton : Qt::LeftButton;
        const int c = tipo == Passo::Trascina ? Uno(1'000'000) : tipo == Passo::Rotella ? 120 * (Uno(7) - 3) : bottone;
        Aggiungi({tipo, Uno(1000), Uno(1000), c, Scelto(Luoghi)});
    }

    void Lista()
    {
        static const QStringList inizi{
            u"<"_s,    u"<t"_s, u"<TABLE "_s, u"<P align="_s, u"<IMG "_s,  u"<A target="_s, u"<TABLE bgcolor="_s,
            u"<zz "_s, u"</"_s, u"<!"_s,      u"<p "_s,       u"<FONT s"_s};
        Batti(Scelto(inizi));
        if (Uno(3) == 0)
            Tasto(Qt::Key_Space, Qt::ControlModifier, u" "_s);
        for (int volte = Uno(6); volte > 0; --volte) {
            const int come = Uno(10);
            if (come < 6)
                Tasto(Scelto(Movimenti));
            else if (come < 9)
                Batti(Scelto(u"abhlst="_s));
            else
                Aggiungi({Uno(2) ? Passo::Clic : Passo::Doppio, Uno(1000), Uno(1000), Qt::LeftButton, u"lista"_s});
        }
        static const QString fine = u"\t\r =>\"\x1b"_s;
        const QChar c = Scelto(fine);
        Tasto(c == u'\x1b' ? int(Qt::Key_Escape) : c == u'\r' ? int(Qt::Key_Return) : TastoDi(c), 0, c);
    }
    void Dialogo()
    {
        Aggiungi({Passo::Comando, 0, 0, 0, Scelto(Dialoghi)});
        for (int volte = Uno(8); volte > 0; --volte) {
            const int come = Uno(8);
            if (come < 3)
                Aggiungi({Passo::Figlio, Uno(1000)});
            else if (come < 5)
                Batti(Uno(2) ? Parola() : QString::number(Uno(300)));
            else if (come < 6)
                Tasto(Scelto(Comuni));
            else if (come < 7)
                Muovi(2);
            else
                Aggiungi({Passo::NomeFile, 0, 0, 0, NomeFile()});
        }
        if (Uno(2))
            Aggiungi({Passo::ScriviDopo, Uno(2) ? Qt::Key_Return : Qt::Key_Escape, 0, 0, Segno()});
        else
            Aggiungi({Passo::Chiudi, Uno(3), Uno(10)});
    }
    QString NomeFile()
    {
        static const QStringList nuovi{u"nuova.html"_s, u"senza"_s, u"manca/x.html"_s, u"è 日.htm"_s, u"."_s};
        const QList<Generatore::File> file = Generatore::Cartella();
        return Uno(3) == 0 ? Scelto(nuovi) : Scelto(file).nome;
    }
    /// A word that is nowhere else.
    QString Segno() { return u"zq%1qz"_s.arg(m_passi.size()); }

    void FileScena()
    {
        static const QStringList comandi{u"MenuFile(0)"_s, u"MenuFile(1)"_s, u"MenuFile(4)"_s, u"MenuFile(5)"_s};
        if (Uno(2))
            Aggiungi({Passo::Comando, 0, 0, 0, Scelto(comandi)});
        else
            Tasto(Scelto(u"NOS"_s).unicode(), Qt::ControlModifier);
        if (Uno(3) == 0)
            Aggiungi({Passo::Chiudi, 2, Uno(2)}); // the question before
        Aggiungi({Passo::NomeFile, 0, 0, 0, NomeFile()});
        Aggiungi({Passo::Chiudi, Uno(3), Uno(3)}); // whether to replace the file, or what went wrong
    }
    void Cerca()
    {
        Tasto(Qt::Key_F, Qt::ControlModifier);
        Batti(Uno(2) ? u"t"_s : Parola());
        for (int volte = Uno(4); volte > 0; --volte)
            Tasto(Uno(3) ? Qt::Key_Return : Qt::Key_F3);
        Aggiungi({Passo::Chiudi, Uno(2)});
        Aggiungi({Passo::Chiudi, 0});
    }
    void Scegli()
    {
        static const QStringList iniziali{u"ta"_s, u"b"_s, u"fo"_s, u"h"_s, u"im"_s, u"zz"_s};
        const QString scelte = Scelto(iniziali);
        Aggiungi({Passo::Scegli, Uno(int(scelte.size()) + 1), 0, 0, scelte});
    }
    void Scambi()
    {
        Aggiungi({Passo::Appunti, 0, 0, 0, Scelto(Pezzi) + Scelto(Pezzi)});
        if (Uno(3) == 0)
            Aggiungi({Passo::Lascia, Uno(1000), Uno(1000), 0, Scelto(Pezzi)});
        Tasto(Scelto(u"VVXC"_s).unicode(), Qt::ControlModifier);
    }
    void Comando()
    {
        const auto menu = TabellaComandi::Menu();
        const auto bottoni = TabellaComandi::Bottoni();
        const auto &voce = menu[size_t(Uno(int(menu.size())))];
        const auto &bottone = bottoni[size_t(Uno(int(bottoni.size())))];
        // Leaving ends what the steps have built up; it is rare.
        if (Uno(2) && !voce.sottomenu && !voce.comando.isEmpty() && (voce.comando != u"MenuFile(11)" || Uno(4) == 0))
            Aggiungi({Passo::Comando, 0, 0, 0, voce.comando.toString()});
        else if (bottone.indice > 0)
            Aggiungi({Passo::Comando, 0, 0, 0, u"%1(%2)"_s.arg(bottone.barra).arg(bottone.indice)});
    }
    void Raro()
    {
        switch (Uno(7)) {
        case 0:
            return Aggiungi({Passo::Misura, 200 + Uno(1100), 100 + Uno(600), Uno(3) == 0});
        case 1:
            return Aggiungi({Passo::Componi, 0, 0, 0, Uno(2) ? u"に|"_s : u'|' + Scelto(Pezzi)});
        case 2:
            return Tasto(Scelto(Strani), Scelto(Modificatori));
        case 3:
            return Tasto(Uno(2) ? 0x0416 : Qt::Key_Q, Scelto(Modificatori), Uno(2) ? u"ж"_s : u"@"_s);
        case 4:
            return Tasto(Qt::Key_G, Qt::ControlModifier);
        case 5:
            return Aggiungi({Passo::Fine, 0, 0, 0, {}});
        default:
            return Aggiungi({Passo::Attendi, Uno(4) == 0 ? 1600 : 280});
        }
    }
    void Scena()
    {
        m_veloce = Uno(2) == 0;
        const int quale = Uno(100);
        if (quale < 16)
            return Lista();
        if (quale < 18)
            return Scegli();
        if (quale < 32)
            return Aggiungi({Passo::Scrivi, Uno(2), 0, 0, Parola()});
        if (quale < 40)
            return Batti(Scelto(Pezzi));
        if (quale < 46)
            return Muovi(1 + Uno(4));
        if (quale < 54)
            return Mouse(Scelto(std::array{Passo::Clic, Passo::Clic, Passo::Doppio, Passo::Trascina, Passo::Rotella}));
        if (quale < 62)
            return Comando();
        if (quale < 70)
            return Dialogo();
        if (quale < 74)
            return FileScena();
        if (quale < 77)
            return Cerca();
        if (quale < 82)
            return Tasto(Scelto(u"ZZYA"_s).unicode(), Qt::ControlModifier);
        if (quale < 87)
            return Scambi();
        if (quale < 90)
            return Aggiungi({Passo::Controllo, Uno(20)});
        if (quale < 92)
            return Aggiungi({Passo::Storia});
        if (quale < 96)
            return Tasto(Scelto(Comuni), Uno(3) == 0 ? Scelto(Modificatori) : 0);
        Raro();
    }

    QRandomGenerator m_caso;
    Passi m_passi;
    bool m_veloce = false;
};

} // namespace

Passi Generatore::Inventa(quint32 seme, int quanti)
{
    return Fantasia(seme).Inventa(quanti);
}

QList<Generatore::File> Generatore::Cartella()
{
    static const QByteArray riga = "<P align=\"center\">Una riga di <B>testo</B> con un <blinc>errore</P>\r\n";
    static const QByteArray pagina = "<HTML>\r\n<HEAD><TITLE>x</TITLE></HEAD>\r\n<BODY>\r\n" + riga.repeated(3) +
                                     "<!-- nota -->\r\n<TABLE aline=left>\r\n</TABLE>\r\n</BODY>\r\n</HTML>\r\n";
    return {{u"pagina.html"_s, pagina},
            {u"latina.html"_s, "<META charset=iso-8859-1>\r\nperch\xE9 \x80\r\n"},
            {u"unix.html"_s, "<P>uno\n<P>due\n\n<blinc>tre"},
            {u"larga.html"_s, "<P>" + QByteArray(5000, 'x') + " <B align=left>" + QByteArray(3000, 'y') + "\r\n"},
            {u"grande.html"_s, pagina + riga.repeated(1400)},
            {u"utf16.html"_s, QByteArray("\xFF\xFE<\0P\0>\0\xE8\0\r\0\n\0", 14)},
            {u"vuota.html"_s, {}}};
}
