#include "hotkeys/hkeyCompare.h"

namespace {

QString shown(const QString &value)
{
    return value.isEmpty() ? QString("(none)") : value;
}

QString kindOf(const HotKeyButton &b)
{
    return b.IdSelect == "Yes" ? "Item ID" : b.IdSelect == "No" ? "S/L" : b.IdSelect;
}

void field(QStringList &parts, const char *name, const QString &before, const QString &after)
{
    if (before != after)
        parts << QString(name) + ' ' + shown(before) + " -> " + shown(after);
}

QString colourName(qint32 color)
{
    const QString name = gfsHotKeyColor_name(color);
    return name.isEmpty() ? QString("silver") : name;
}

} // namespace

QList<SetDifference> hotKeySetDifferences(const HotKeySet &before, const QString &titleBefore,
                                          const HotKeySet &after, const QString &titleAfter)
{
    QList<SetDifference> found;
    if (titleBefore != titleAfter)
        found << SetDifference{0, 0, "Title: " + shown(titleBefore) + " -> " + shown(titleAfter)};
    for (int g = 1; g <= 4; ++g) {
        QStringList column;
        field(column, "title", before[g].Caption, after[g].Caption);
        field(column, "colour", colourName(before[g].Color), colourName(after[g].Color));
        if (!column.isEmpty())
            found << SetDifference{g, 0, QString("Column %1: ").arg(g) + column.join("; ")};
        for (int k = 1; k <= 8; ++k) {
            const HotKeyButton &a = before[g].Buttons[k], &b = after[g].Buttons[k];
            QStringList parts;
            field(parts, "label", a.Caption, b.Caption);
            field(parts, "item", a.Item, b.Item);
            field(parts, "sold by", kindOf(a), kindOf(b));
            field(parts, "link", a.LinkSet, b.LinkSet);
            field(parts, "picture", a.Icon, b.Icon);
            field(parts, "root", a.Root, b.Root);
            if (!parts.isEmpty())
                found << SetDifference{
                    g, k, QString("Column %1 key %2: ").arg(g).arg(k) + parts.join("; ")};
        }
    }
    return found;
}
