#pragma once

#include <QTest>

#include <array>

/// The columns of a data function, in the order in which its rows give them: Colonne<QString, int>({"testo", "riga"}).
template <typename... Tipo>
void Colonne(const std::array<const char *, sizeof...(Tipo)> &nomi)
{
    std::size_t quale = 0;
    (QTest::addColumn<Tipo>(nomi[quale++]), ...);
}
