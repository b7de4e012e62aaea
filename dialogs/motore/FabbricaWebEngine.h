#pragma once

#include "dialogs/MotoreAnteprima.h"

#include <QObject>

/// What the module exports.
class FabbricaWebEngine : public QObject, public FabbricaMotore
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "velloro.FabbricaMotore/3")
    Q_INTERFACES(FabbricaMotore)

public:
    [[nodiscard]] std::unique_ptr<MotoreAnteprima> Crea(OspiteMotore &ospite, QWidget &contenitore) override;

private:
    bool m_preparata = false;
};
