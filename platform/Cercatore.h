#pragma once

#include <vector>

#include <QString>
#include <QStringView>

/// Looks for one text in others. Linear in the text searched, whatever is looked for; letter case counts or is folded
/// as the Unicode standard says, unit for unit.
class Cercatore
{
public:
    Cercatore(QStringView testo, Qt::CaseSensitivity caso);

    /// First position from \a da on where the text stands in \a campo, or -1. An empty text stands nowhere.
    [[nodiscard]] qsizetype Prossimo(QStringView campo, qsizetype da) const;

private:
    [[nodiscard]] char16_t Unita(QStringView testo, qsizetype i) const;

    Qt::CaseSensitivity m_caso;
    QString m_testo;                  ///< folded when letter case does not count
    std::vector<qsizetype> m_ripiego; ///< units that still agree when the one after k agreeing units does not
};
