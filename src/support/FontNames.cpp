#include "support/FontNames.h"

#include "support/KdeSettings.h"

#include <QList>
#include <QRegularExpression>
#include <QStringList>

namespace moorline {

namespace {

bool isSize(const QString &word)
{
    static const QRegularExpression size(QStringLiteral("^[0-9]+([.][0-9]*)?(px)?$"));
    return size.match(word).hasMatch();
}

/// As Pango has them, which is what reads these descriptions. A comma ends the families.
bool isStyle(const QString &word)
{
    static const QRegularExpression style(
        QStringLiteral("^(normal|roman|oblique|italic|small-caps|(all-|)(small|petite)-caps|unicase|title-caps"
                       "|thin|(ultra-|extra-)?light|semi-light|demi-light|book|regular|medium|(semi-|demi-)bold|bold"
                       "|(ultra-|extra-)bold|(ultra-|extra-)?(heavy|black)"
                       "|((ultra-|extra-|semi-)?(condensed|expanded))"
                       "|not-rotated|south|upside-down|north|rotated-(left|right)|east|west)$"),
        QRegularExpression::CaseInsensitiveOption);
    return style.match(word).hasMatch();
}

bool isVariation(const QString &word)
{
    return word.startsWith(u'@') || word.startsWith(u'#');
}

/// What KDE takes where its settings name none.
QString kdeDefault()
{
    return QStringLiteral("Noto Sans");
}

QString familyInKdeSession(const QList<QByteArray> &settings)
{
    for (const QByteArray &kdeglobals : settings) {
        if (const auto family = familyInKdeSettings(kdeglobals))
            return *family;
    }
    return kdeDefault();
}

} // namespace

QString familyInDescription(const QString &description)
{
    QStringList words = description.simplified().split(u' ', Qt::SkipEmptyParts);
    while (!words.isEmpty() && isVariation(words.last()))
        words.removeLast();
    if (!words.isEmpty() && isSize(words.last()))
        words.removeLast();
    while (!words.isEmpty() && isStyle(words.last()))
        words.removeLast();
    return words.join(u' ').section(u',', 0, 0).trimmed();
}

std::optional<QString> familyInKdeSettings(const QByteArray &kdeglobals)
{
    // The family comes first, then a size and figures that only Qt reads.
    const QString family = QString::fromUtf8(kdeSetting(kdeglobals, "General", "font")).section(u',', 0, 0).trimmed();
    return family.isEmpty() ? std::nullopt : std::optional(family);
}

QString sessionFontFamily(const SessionFontFacts &facts)
{
    if (facts.told)
        return familyInDescription(*facts.told);
    return facts.isKde ? familyInKdeSession(facts.kdeSettings) : familyInDescription(facts.gnomes);
}

} // namespace moorline
