#pragma once

#include <QWebEngineUrlRequestInterceptor>

class OspiteMotore;
class SchemaPagina;

/// Asks the program about each request of a page.
class Intercettatore : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    Intercettatore(OspiteMotore &ospite, SchemaPagina &schema, QObject *parent);

    void interceptRequest(QWebEngineUrlRequestInfo &richiesta) override;

private:
    OspiteMotore &m_ospite;
    SchemaPagina &m_schema;
};
