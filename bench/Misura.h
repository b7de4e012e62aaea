#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

/// The clock of the measures: milliseconds of the wall clock, or of this process's own processor time, which stays
/// comparable while other programs work.
class Orologio
{
public:
    static inline bool diProcessore = false;

    [[nodiscard]] static double Adesso()
    {
        timespec ora{};
        clock_gettime(diProcessore ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC, &ora);
        return double(ora.tv_sec) * 1e3 + double(ora.tv_nsec) / 1e6;
    }
};

/// The median of the milliseconds that \a passo takes. It runs \a minimo times at least and \a massimo at most; in
/// between it stops after one second. \a prepara runs before each, unmeasured.
template <typename Prepara, typename Passo>
[[nodiscard]] double Mediana(int minimo, int massimo, Prepara prepara, Passo passo)
{
    std::vector<double> tempi;
    const auto inizio = std::chrono::steady_clock::now();
    while (int(tempi.size()) < massimo &&
           (int(tempi.size()) < minimo || std::chrono::steady_clock::now() - inizio < std::chrono::seconds(1))) {
        prepara();
        const double prima = Orologio::Adesso();
        passo();
        tempi.push_back(Orologio::Adesso() - prima);
    }
    const auto mezzo = tempi.begin() + std::ptrdiff_t(tempi.size() / 2);
    std::nth_element(tempi.begin(), mezzo, tempi.end());
    return *mezzo;
}
