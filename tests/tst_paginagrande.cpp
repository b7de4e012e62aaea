#include "ProgrammaDiProva.h"

#include "app/PaginaCorrente.h"
#include "editor/clsUndo.h"
#include "html/Risultati.h"

using namespace Qt::StringLiterals;
using namespace Aiuti;
using namespace ProgrammaDiProva;

/// A page so large that its beginning is shown before the rest is there.
class TstPaginaGrande : public QObject
{
    Q_OBJECT

private slots:
    void opensWholeAsOneStep()
    {
        QTemporaryDir cartella;
        Prepara(cartella);
        QByteArray pagina("<html><body>\r\n<p>");
        while (pagina.size() < 2'200'000)
            pagina += "<b>testo</b> e poi <zzz> e <p align=\"left\">altro</p>\r\n";
        pagina += "</body></html>\r\n";
        const QString testo = QString::fromLatin1(pagina).chopped(1); // the last line end is a lone CR
        const QString percorso = cartella.filePath(u"grande.html"_s);
        Scrivi(percorso, pagina);

        FrmStart finestra;
        ProgrammaDiProva::Avvia(finestra);
        RichTextBox *pad = finestra.PadCorrente();
        const QString vuota = pad->Text();
        QVERIFY(finestra.findChild<PaginaCorrente *>()->Apri(percorso));
        QVERIFY(pad->Text() == testo);
        QVERIFY(pad->updatesEnabled());
        QCOMPARE(ModuloVerificaSintassi::ArrayRisultati().size(), size_t(pagina.count("<zzz>")) + 1);
        QCOMPARE(pad->AspettoIn(int(pagina.lastIndexOf("body"))).colore,
                 pad->AspettoIn(int(pagina.indexOf("body"))).colore);

        clsUndo &undo = *finestra.UndoRTB();
        QVERIFY(undo.AnnullaComando());
        QVERIFY(pad->Text() == vuota && !undo.CanUndo());
        QVERIFY(undo.RipristinaComando());
        QVERIFY(pad->Text() == testo);
    }
};

QTEST_MAIN(TstPaginaGrande)
#include "tst_paginagrande.moc"
