#include "dialogs/CaricaMotore.h"

#include "app/ModuloDichiarazioni.h"
#include "platform/Utente.h"

#include <QPluginLoader>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

/// Keeps from the error output what the engine says of its graphics while it starts: that it draws without OpenGL is
/// meant. Everything else passes.
class SenzaBrusio
{
public:
    SenzaBrusio() { precedente = qInstallMessageHandler(Filtra); }
    ~SenzaBrusio() { qInstallMessageHandler(precedente); }
    Q_DISABLE_COPY_MOVE(SenzaBrusio)

private:
    static void Filtra(QtMsgType tipo, const QMessageLogContext &contesto, const QString &testo)
    {
        static constexpr std::array attesi = {"Qt WebEngine seems to be initialized from a plugin"_L1,
                                              "No suitable graphics backend found"_L1, "\n\nGL Type"_L1};
        if (tipo != QtFatalMsg &&
            std::any_of(attesi.begin(), attesi.end(), [&](auto a) { return testo.startsWith(a); }))
            return;
        if (precedente)
            precedente(tipo, contesto, testo);
    }

    inline static QtMessageHandler precedente = nullptr;
};

/// Chromium does not start as root unless its sandbox is switched off.
void ApriSandboxPerRoot()
{
    constexpr auto variabile = "QTWEBENGINE_DISABLE_SANDBOX";
    if (!Utente::Amministratore() || qEnvironmentVariableIsSet(variabile))
        return;
    qputenv(variabile, "1");
    std::fputs("velloro: running as root: the preview works without its sandbox\n", stderr);
}

/// Calls of a page send datagrams that the engine asks nobody about, and a frame can make them before a script of ours
/// runs in it. The engine reads this once, so it holds with the network on as well.
void NienteDatagrammi()
{
    constexpr auto variabile = "QTWEBENGINE_CHROMIUM_FLAGS";
    const QByteArray opzione = "--force-webrtc-ip-handling-policy=disable_non_proxied_udp";
    const QByteArray date = qgetenv(variabile);
    if (!date.contains(opzione))
        qputenv(variabile, date.isEmpty() ? opzione : date + ' ' + opzione);
}

} // namespace

std::unique_ptr<MotoreAnteprima> CaricaMotore::DalModulo(OspiteMotore &ospite, QWidget &contenitore, QString &motivo)
{
    const SenzaBrusio silenzio;
    ApriSandboxPerRoot();
    NienteDatagrammi();
    QPluginLoader modulo(
        ModuloDichiarazioni::PercorsoIn(ModuloDichiarazioni::CartellaProgramma(), u"motore_anteprima"));
    auto *fabbrica = qobject_cast<FabbricaMotore *>(modulo.instance());
    if (!fabbrica) {
        motivo = modulo.errorString();
        return nullptr;
    }
    return fabbrica->Crea(ospite, contenitore);
}
