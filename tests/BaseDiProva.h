#pragma once

#include <QRandomGenerator>

#include "html/ModuloTag.h"

/// A small knowledge base and pages made at random from it, from faults and from noise.
namespace BaseDiProva
{

inline void Carica()
{
    using ModuloTag::DatiProprieta;
    using ModuloTag::DatiTag;
    const auto proprieta = [](const char16_t *nome, const QStringList &valori = {}) {
        return DatiProprieta{QString::fromUtf16(nome), 0, valori.isEmpty() ? valori : QStringList{QString()} + valori,
                             0};
    };
    const QStringList lati{QStringLiteral("left"), QStringLiteral("Right")};
    const auto comune = QList<DatiProprieta>{{}, proprieta(u"ALIGN", lati), proprieta(u"OnClick")};
    ModuloTag::ImpostaArrayTag({
        {},
        {{{}, proprieta(u"HREF"), proprieta(u"NAME")}, QStringLiteral("A"), true},
        {comune, QStringLiteral("B"), true},
        {{{}, proprieta(nullptr)}, QStringLiteral("BR"), false},
        {comune, QStringLiteral("P"), true},
        {{{}, proprieta(u"TYPE", {QStringLiteral("text/javascript")})}, QStringLiteral("SCRIPT"), true},
        {{{}, proprieta(u"BGCOLOR", {QStringLiteral("#FF0000")}), proprieta(u"ALIGN", lati)},
         QStringLiteral("TABLE"),
         true},
    });
}

/// About \a pezzi pieces, most of them close to what the check looks for.
inline QString Pagina(QRandomGenerator &caso, int pezzi)
{
    static const QStringList Pezzi =
        QString::fromUtf16(u"<|<|>|>|<b>|</b>|<p |<table |<a |<BR/>|<|</|<foo |<foo>|<Foo/x "
                           u"y>|<script>|</script>|</SCRIPT >|<!-- |-->|<!DOCTYPE x>|<?|<%|"
                           u"align=|ALIGN=|align=\"|align='|href=|src=\"|xmlns:o=\"|xml:|XMLNS=|bgcolor|=|=|=\"|='|\"|'"
                           u"|\"|/| | | |\t|\b|\n|\r\n|\r\n|\r|"
                           u"left|RIGHT|centre|#ff0000|onclick=\"f()\"|nowhere=|name=|e\x300|\xD83D\xDE00|\x130|\x17F|"
                           u"text|&lt;|\x2029|\xA0|\xFDD0|\x85|,")
            .split(u'|');
    QString pagina;
    for (int i = 0; i < pezzi; ++i) {
        const QString &pezzo = Pezzi[caso.bounded(int(Pezzi.size()))];
        pagina += caso.bounded(40) == 0 ? QString(QChar(char16_t(caso.bounded(0x3000)))) : pezzo;
    }
    return pagina;
}

} // namespace BaseDiProva
