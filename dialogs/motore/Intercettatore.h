#pragma once

#include <QWebEngineUrlRequestInterceptor>

class OspiteMotore;

/// Asks the program about each request of a page.
class Intercettatore : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    Intercettatore(OspiteMotore &ospite, QObject *parent);

    void interceptRequest(QWebEngineUrlRequestInfo &richiesta) override;

private:
    OspiteMotore &m_ospite;
};
