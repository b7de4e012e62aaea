#pragma once

#include <QStringView>

#include <vector>

/// Looks for many names in a text at once, in any case. One pass over the text, linear in it and in the names.
class RicercaNomi
{
public:
    RicercaNomi();

    /// Takes in \a nome and gives its number, from 0; equal names get the same one. The empty name is found in any text
    /// that is not empty.
    int Aggiungi(QStringView nome);

    /// By number: the position just after the first place in \a testo where the name ends; -1 when there is none.
    [[nodiscard]] std::vector<qsizetype> Cerca(QStringView testo);

private:
    /// A node of the tree of names: the end of a beginning of one of them.
    struct Nodo {
        int nome = -1;      ///< number of the name that ends here
        int ripiego = 0;    ///< node of the longest end of this beginning that is a beginning, too
        int superiore = -1; ///< nearest node along the fall-backs at which a name ends, or -1
        char16_t unita = 0;
        int padre = 0;
    };
    struct Arco {
        quint64 chiave = 0; ///< node and unit; 0: free. No arc leaves the root with unit 0 (see Chiave)
        int verso = 0;
    };

    [[nodiscard]] int Figlio(int nodo, char16_t unita) const;
    [[nodiscard]] size_t Posto(quint64 chiave) const;
    int AggiungiFiglio(int nodo, char16_t unita);
    void Collega();

    std::vector<Nodo> m_nodi;
    std::vector<Arco> m_archi;   ///< open addressing, a power of two, at most half of it taken
    std::vector<int> m_daRadice; ///< by unit: child of the root, or 0
    int m_nomi = 0;
    int m_vuoto = -1; ///< number of the empty name
};
