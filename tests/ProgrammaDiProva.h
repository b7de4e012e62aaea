#pragma once

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>

#include "Aiuti.h"
#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "dialogs/Modelli.h"
#include "editor/Recupero.h"

/// The whole program in a test, with \a cartella as its folder: in Italian, every new page the blank one.
namespace ProgrammaDiProva
{

/// No text of a test before this one is offered.
inline void TogliRecuperi()
{
    QDir(Recupero::CartellaUtente()).removeRecursively();
}

inline void Prepara(const QTemporaryDir &cartella)
{
    // Nothing of the user's, and nothing that a killed test left.
    for (const char *nome : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(nome, QFile::encodeName(cartella.filePath(QStringLiteral("casa"))));
    QApplication::setQuitOnLastWindowClosed(false);
    Modelli::ImpostaMostra(false);
    QVERIFY(QFile::copy(QStringLiteral(CARTELLA_PROGRAMMA "/tag html.db"),
                        cartella.filePath(QStringLiteral("tag html.db"))));
    ModuloDichiarazioni::ImpostaCartellaProgramma(cartella.path());
    QVERIFY(ModuloPrincipale::CaricaLingua(QStringLiteral(CARTELLA_PROGRAMMA), 0).Riuscito());
}

inline void Avvia(FrmStart &finestra)
{
    QSignalSpy mostrata(&finestra, &FrmStart::Mostrata);
    QTRY_COMPARE(mostrata.size(), 1);
}

inline void Scegli(QDialog *dialogo, const QString &file)
{
    dialogo->findChild<QLineEdit *>()->setText(file);
    QTest::keyClick(dialogo, Qt::Key_Return);
}

} // namespace ProgrammaDiProva
