#pragma once

#include "Passo.h"

/// What a user might do, made up from a seed.
namespace Generatore
{

/// At least \a quanti steps; the same seed gives the same ones.
[[nodiscard]] Passi Inventa(quint32 seme, int quanti);

/// The pages that the steps open and save, as they are before the first step.
struct File {
    QString nome;
    QByteArray byte;
};
[[nodiscard]] QList<File> Cartella();

} // namespace Generatore
