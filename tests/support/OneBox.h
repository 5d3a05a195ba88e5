#pragma once
#include "support/Doubles.h"
#include <gtest/gtest.h>

namespace testing_support {

// Whether `shown` is exactly one box saying `text`, with `style` and `title` when given.
inline testing::AssertionResult oneBox(const QList<Box> &shown, const QString &text, int style = -1,
                                       const QString &title = {})
{
    if (shown.size() != 1)
        return testing::AssertionFailure() << shown.size() << " boxes shown, not one";
    const Box &box = shown[0];
    if (box.text != text)
        return testing::AssertionFailure() << "the box says \"" << box.text.toStdString() << '"';
    if (style >= 0 && box.style != style)
        return testing::AssertionFailure() << "style " << box.style << ", not " << style;
    if (!title.isNull() && box.title != title)
        return testing::AssertionFailure() << "title \"" << box.title.toStdString() << '"';
    return testing::AssertionSuccess();
}

} // namespace testing_support
