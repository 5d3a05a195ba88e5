#pragma once
#include "support/Doubles.h"
#include <QString>
#include <QStringList>

// What the tests of saving do, in this process or in the helper program that
// plays a second station (tests/helpers/save_helper.cpp).
namespace testing_support {

// Fills the set record with one of two versions of a set, which differ in every
// line and in length, so a reader can tell them apart and spot a part of one.
// Returns the title.
QString fillSetVersion(int version);

// The files a save under test finds: set 07, set 08 with a key linking to 7,
// SPECIAL.BDF and COUPON.BDF, written directly in `folder`.
void writeOldFiles(const QString &folder);

// One save: "set" (set 07, version 1), "special", "coupon" or "remove" (set 07,
// whose link repair rewrites set 08). True when it went through; `said` gets the
// text of every box it showed through `dialogs` and every problem of a removal.
bool saveOnce(const QString &what, ScriptedDialogs &dialogs, QStringList *said);

} // namespace testing_support
