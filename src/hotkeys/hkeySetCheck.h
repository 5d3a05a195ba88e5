#pragma once
#include "hotkeys/hkeyServices.h"
#include <QHash>
#include <QList>
#include <functional>
#include <optional>

// Checks of the set files as they lie in the data folder, and the keys that sell
// an item or open a set. Every file is read once, as it is; nothing is written.
namespace setcheck {

enum class Kind {
    Unreadable,     // the file could not be read
    NotASet,        // a name no key can open, such as HKSET01-old.SDF
    BadLine,        // a line the reader skips, or line ends of a hand edit
    MissingLink,    // opens a set whose file is not there
    SelfLink,       // opens its own set
    NoItemKind,     // an item that is neither an S/L nor an Item ID
    ItemMissing,    // not in the inventory
    ItemDeleted,    // in the inventory with status "D"
    InventoryFault, // the inventory could not be read
    MissingPicture, // not in the pictures folder, unreadable or too large to show
    KeyFile,        // a special or coupon key: a keyboard character used twice, an amount
    LeftOver,       // a picture or colour on a key or column that holds nothing else
    NotOpened,      // no key of another set opens it; information only
    SameItem,       // sells what an earlier key of the set sells; information only
    LinkNoLabel,    // opens a set but shows no label
    LabelCut,       // a label the key cannot show whole
    LowContrast,    // a column whose labels read badly on its colour
    Sells,          // where used: a key that sells the item
    Opens,          // where used: a key that opens the set
};

// One line of the list: a set, and where in it (column and key 0 for the set as a whole).
struct Finding {
    QString fileName;
    QString number; // as the set list shows it
    QString title;
    int group = 0;
    int key = 0;
    Kind kind = Kind::Unreadable;
    QString text;
    // The set file as the check read it, so that a fix can tell another station's change.
    QByteArray bytes;
    bool information() const { return kind == Kind::NotOpened || kind == Kind::SameItem; }
};

enum class ItemState { Found, Deleted, Missing };
// The key by which items are told apart: the stored S/L, or the Item ID, in capitals.
QString itemKey(const QString &item, bool byId);
// How the inventory knows many items at once, all by S/L (`byId` false) or all by
// Item ID: the state of each key (itemKey) it holds, keys it lacks left out;
// nothing when the inventory could not be read.
using ItemLookup =
    std::function<std::optional<QHash<QString, ItemState>>(const QStringList &keys, bool byId)>;
// Told before each file with the files done and their count; false stops the work.
using Progress = std::function<bool(int done, int total)>;

struct Result {
    QList<Finding> findings;
    bool canceled = false;
    int sets = 0; // files read
};

// How the sales screen draws keys, which only the screens know: what of a key's
// label does not show (empty when all of it does), and the contrast ratio of a
// column's labels on its colour. Either may be left out, and its check is skipped.
struct Drawing {
    std::function<QString(const HotKeyButton &key, int group, int index)> labelProblem;
    std::function<double(qint32 color)> contrast;
};
// Below this contrast ratio a label is hard to read.
inline constexpr double kMinContrast = 3.0;

Result checkSets(const ItemLookup &lookup, const Progress &progress = {},
                 const Drawing &drawing = {});
// The special and coupon keys: characters used by two keys, amounts that are no number.
QList<Finding> checkKeyFiles();
// What the reader cannot take from a set file (an empty file, no title line, skipped
// lines), or why it cannot be read at all; empty for a file read whole.
QStringList unreadableParts(const QString &fileName);

// The S/Ls a typed code may stand for: as typed, and for a short number such as
// "2002" or "2002.5" also its full form with leading zeros ("0002002.0", "0002002.5").
QStringList slForms(const QString &typed);

// An item by its S/L (any form) and its Item ID; either may be empty.
struct Item {
    QString sl;
    QString itemId;
};
Result whereItemUsed(const Item &item, const Progress &progress = {});
// Keys of every set that open set `sSetNumber` (any form of the number).
Result whereSetUsed(const QString &sSetNumber, const Progress &progress = {});

} // namespace setcheck
