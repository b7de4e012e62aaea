#pragma once

#include "GuardiaMemoria.h"
#include "Ripresa.h"

#include "dialogs/MotoreAnteprima.h"

#include <QObject>
#include <QTimer>

class PaginaWeb;
class QWebEngineProfile;
class SchemaPagina;
class QWebEngineView;

/// The engine: a view, a profile that is never written, and the page, which is replaced when it does not answer.
class MotoreWebEngine : public QObject, public MotoreAnteprima
{
    Q_OBJECT

public:
    MotoreWebEngine(OspiteMotore &ospite, QWidget &contenitore);
    ~MotoreWebEngine() override;

    void Naviga(const QString &percorso, const QString &posto, const QString &codifica) override;
    void Ricomincia() override;
    void Permetti(const PermessiAnteprima &permessi) override;
    void Interroga(std::function<void()> risposta) override;

    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void CreaProfilo();
    void CreaPagina();
    void CollegaPagina();
    void TogliFuoco(QObject *oggetto);

    OspiteMotore &m_ospite;
    QWidget &m_contenitore;
    QWebEngineProfile *m_profilo = nullptr;
    SchemaPagina *m_schema = nullptr;
    PaginaWeb *m_pagina = nullptr;
    QWebEngineView *m_vista = nullptr;
    Ripresa m_ripresa;
    QPointF m_scorsa; ///< where the page was scrolled to last
    QTimer m_ferma;   ///< until it is taken to stay there
    GuardiaMemoria m_guardia{this};
    QString m_posto;
};
