#pragma once
#include <QByteArray>

namespace testing_support {

// One key's line of a set file, as the program writes it.
inline QByteArray keyLine(int k, const QByteArray &caption, const QByteArray &item,
                          const QByteArray &idSelect, const QByteArray &link = "",
                          const QByteArray &icon = "")
{
    return "[BUTTON]" + QByteArray::number(k) + "[CAPTION]" + caption + "[ITEM]" + item + "[ICON]" +
           icon + "[IDSELECT]" + idSelect + "[LINKSET]" + link + "[ROOT]\r\n";
}

// The lines of keys `from` to 8 of a column, left empty.
inline QByteArray blankKeys(int from = 1)
{
    QByteArray out;
    for (int k = from; k <= 8; ++k) out += keyLine(k, "", "", "");
    return out;
}

} // namespace testing_support
