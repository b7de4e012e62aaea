#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class Anteprima;
class FrmAnteprima;
class QLineEdit;
class QUrl;
class RichTextBox;

/// A preview with the real engine, and the files of a site that it shows. What a page found out it says in its title,
/// which comes back as the text for the status bar.
class ProvaMotore : public QObject
{
    Q_OBJECT

public:
    ProvaMotore();
    ~ProvaMotore() override;

private slots:
    void initTestCase();
    void cleanupTestCase();

protected:
    static constexpr int Attesa = 30000; // ms; a busy machine starts the engine slowly

    void Mostra(const QString &html, const QString &titolo = QStringLiteral("inizio"));
    /// Chooses a line of the preview's menu.
    void Commuta(int voce);

    QTemporaryDir m_cartella;
    std::unique_ptr<QWidget> m_principale;
    FrmAnteprima *m_finestra = nullptr;
    QLineEdit *m_altro = nullptr;
    std::unique_ptr<Anteprima> m_anteprima;
    std::unique_ptr<RichTextBox> m_pad;
    QString m_stato;

private:
    void CreaSito();
};
