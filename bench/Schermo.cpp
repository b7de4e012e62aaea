#include "bench/Schermo.h"

#include "bench/Misura.h"

#include <cstring>

#include <poll.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace
{

constexpr int LarghezzaMinima = 400; ///< windows narrower than this are a splash or a dialog
constexpr int Lato = 8;              ///< pixels

// The window and its frame may go at any time; what is asked of a window that is gone is no error here.
int NessunErrore(Display *, XErrorEvent *)
{
    return 0;
}

} // namespace

Schermo::Schermo() : m_display(XOpenDisplay(nullptr))
{
    XSetErrorHandler(NessunErrore);
    if (m_display)
        XSelectInput(m_display, DefaultRootWindow(m_display), StructureNotifyMask | SubstructureNotifyMask);
}

Schermo::~Schermo()
{
    if (m_display)
        XCloseDisplay(m_display);
}

Schermo::Finestra Schermo::Visibile() const
{
    return Cerca(DefaultRootWindow(m_display), 0);
}

QByteArray Schermo::Figura() const
{
    return Figura(QRect(0, 0, DisplayWidth(m_display, DefaultScreen(m_display)),
                        DisplayHeight(m_display, DefaultScreen(m_display))));
}

QByteArray Schermo::Figura(const QRect &parte) const
{
    constexpr int Passo = 8;
    const QRect schermo(0, 0, DisplayWidth(m_display, DefaultScreen(m_display)),
                        DisplayHeight(m_display, DefaultScreen(m_display)));
    QByteArray figura;
    if (parte.isEmpty() || !schermo.contains(parte))
        return figura;
    for (int riga = parte.top() + Passo / 2; riga <= parte.bottom(); riga += Passo) {
        XImage *immagine = XGetImage(m_display, DefaultRootWindow(m_display), parte.x(), riga, unsigned(parte.width()),
                                     1, AllPlanes, ZPixmap);
        if (!immagine)
            continue;
        figura.append(immagine->data, immagine->bytes_per_line);
        XDestroyImage(immagine);
    }
    return figura;
}

bool Schermo::Altra(const QByteArray &una, const QByteArray &altra)
{
    constexpr double Ornamento = 0.003; // a caret, a moving ornament
    if (una.size() != altra.size())
        return true;
    qsizetype diversi = 0;
    for (qsizetype i = 0; i < una.size(); i += 4)
        diversi += std::memcmp(una.constData() + i, altra.constData() + i, 4) != 0 ? 1 : 0;
    return double(diversi) * 4 > double(una.size()) * Ornamento;
}

QPoint Schermo::Angolo(Finestra finestra) const
{
    int x = 0;
    int y = 0;
    Window figlia = 0;
    XTranslateCoordinates(m_display, finestra, DefaultRootWindow(m_display), 0, 0, &x, &y, &figlia);
    return {x, y};
}

unsigned Schermo::Colore(QPoint dove) const
{
    XImage *immagine = XGetImage(m_display, DefaultRootWindow(m_display), dove.x(), dove.y(), 1, 1, AllPlanes, ZPixmap);
    if (!immagine)
        return 0;
    const unsigned long colore = XGetPixel(immagine, 0, 0);
    XDestroyImage(immagine);
    return unsigned(colore & 0xFFFFFF);
}

std::optional<QPoint> Schermo::Cerca(unsigned colore) const
{
    const int larghezza = DisplayWidth(m_display, DefaultScreen(m_display));
    const int altezza = DisplayHeight(m_display, DefaultScreen(m_display));
    XImage *immagine = XGetImage(m_display, DefaultRootWindow(m_display), 0, 0, unsigned(larghezza), unsigned(altezza),
                                 AllPlanes, ZPixmap);
    if (!immagine)
        return std::nullopt;
    const auto uguale = [&](int x, int y) { return (XGetPixel(immagine, x, y) & 0xFFFFFF) == colore; };
    std::optional<QPoint> trovato;
    for (int y = 0; y < altezza - Lato && !trovato; ++y) {
        for (int x = 0; x < larghezza - Lato && !trovato; ++x) {
            if (uguale(x, y) && uguale(x + Lato, y) && uguale(x, y + Lato) && uguale(x + Lato, y + Lato))
                trovato = QPoint(x + Lato / 2, y + Lato / 2);
        }
    }
    XDestroyImage(immagine);
    return trovato;
}

Schermo::Finestra Schermo::Attiva() const
{
    Finestra attiva = 0;
    int ritorno = 0;
    XGetInputFocus(m_display, &attiva, &ritorno);
    return attiva;
}

void Schermo::Premi(Finestra finestra, Simbolo tasto, unsigned modificatori) const
{
    Tasto(finestra, KeyPress, tasto, modificatori);
}

void Schermo::Rilascia(Finestra finestra, Simbolo tasto, unsigned modificatori) const
{
    Tasto(finestra, KeyRelease, tasto, modificatori);
}

void Schermo::Tasto(Finestra finestra, int tipo, Simbolo tasto, unsigned modificatori) const
{
    XEvent evento{};
    evento.xkey.type = tipo;
    evento.xkey.display = m_display;
    evento.xkey.window = finestra;
    evento.xkey.root = DefaultRootWindow(m_display);
    evento.xkey.same_screen = True;
    evento.xkey.state = modificatori;
    evento.xkey.keycode = XKeysymToKeycode(m_display, tasto);
    XSendEvent(m_display, finestra, True, tipo == KeyPress ? KeyPressMask : KeyReleaseMask, &evento);
    XFlush(m_display);
}

std::optional<double> Schermo::Risposta(Finestra finestra, double limite) const
{
    static long numero = 0;
    const Atom ping = XInternAtom(m_display, "_NET_WM_PING", False);
    XEvent domanda{};
    domanda.xclient.type = ClientMessage;
    domanda.xclient.window = finestra;
    domanda.xclient.message_type = XInternAtom(m_display, "WM_PROTOCOLS", False);
    domanda.xclient.format = 32;
    domanda.xclient.data.l[0] = long(ping);
    domanda.xclient.data.l[1] = ++numero;
    domanda.xclient.data.l[2] = long(finestra);
    const double inizio = Orologio::Adesso();
    XSendEvent(m_display, finestra, False, NoEventMask, &domanda);
    XFlush(m_display);
    while (Orologio::Adesso() - inizio < limite) {
        while (XPending(m_display) > 0) {
            XEvent evento{};
            XNextEvent(m_display, &evento);
            if (evento.type == ClientMessage && Atom(evento.xclient.data.l[0]) == ping &&
                evento.xclient.data.l[1] == numero)
                return Orologio::Adesso() - inizio;
        }
        pollfd attesa{ConnectionNumber(m_display), POLLIN, 0};
        ::poll(&attesa, 1, 20);
    }
    return std::nullopt;
}

Schermo::Finestra Schermo::Cerca(Finestra padre, int livello) const
{
    Window radice = 0;
    Window suo = 0;
    Window *figli = nullptr;
    unsigned quanti = 0;
    Window trovata = 0;
    if (!XQueryTree(m_display, padre, &radice, &suo, &figli, &quanti))
        return 0;
    for (unsigned i = 0; i < quanti && !trovata; ++i) {
        XWindowAttributes dati{};
        char *nome = nullptr;
        if (!XGetWindowAttributes(m_display, figli[i], &dati) || dati.map_state != IsViewable ||
            dati.width < LarghezzaMinima)
            continue;
        if (XFetchName(m_display, figli[i], &nome) && nome)
            trovata = figli[i];
        XFree(nome);
        if (!trovata && livello < 2)
            trovata = Cerca(figli[i], livello + 1);
    }
    XFree(figli);
    return trovata;
}
