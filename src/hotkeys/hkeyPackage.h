#pragma once
#include "hotkeys/hkeyServices.h"
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

// Set packages: sets carried from one store to another in one zip file, with the
// pictures their keys show, and the items their keys sell described by every
// code the source store knows, so that another store can find its own item.
namespace setpackage {

inline constexpr int kFormat = 1;
// What a package may hold: 999 sets and their pictures fit well below these.
inline constexpr int kMaxEntries = 5000;
inline constexpr qint64 kMaxPicture = 20 * 1024 * 1024;
inline constexpr qint64 kMaxSetFile = 64 * 1024;
inline constexpr qint64 kMaxManifest = 64 * 1024 * 1024;

// Told before each step with the steps done and their count; false stops the work.
using Progress = std::function<bool(int done, int total)>;

// ---- Export

struct ExportRequest {
    QStringList sets; // numbers, any form ("07", "7")
    bool special = false;
    bool coupon = false;
};

// The sets that the keys of `sets` open, directly or through other sets, that
// are not among them and whose files are there, in file form ("05").
QStringList linkedSets(const QStringList &sets);

struct ExportResult {
    bool ok = false;
    QString error;     // what failed, for the user; the file was not made
    QStringList notes; // what the package lacks: a picture that is not there, ...
    int sets = 0, pictures = 0, itemKeys = 0;
};
// Writes the package; the item facts come from this store's inventory.
ExportResult exportSets(const QString &file, const ExportRequest &request,
                        const Progress &progress = {});

// ---- Import

enum class Match { BySL, ById, ByUpc, None };
QString matchText(Match m); // "S/L", "Item ID", "UPC", "not found"

// What the source store knew of the item a key sells.
struct SourceItem {
    QString sl; // display form
    QString itemId;
    QStringList upc;
    QString description;
};

struct PackageSet {
    QString number; // as in the package, file form
    QString title;
    HotKeySet groups;
    QString target; // the number it gets in this store, file form
};

// One key that sells an item, and what this store has for it.
struct ItemKey {
    int set = 0; // index into Plan::sets
    int group = 0, key = 0;
    QString caption, item, idSelect; // as the package has them
    SourceItem source;
    Match match = Match::None;
    QString code; // the code that matched
    QString newItem, newIdSelect, storeDescription;
};

// One key that opens a set.
struct LinkKey {
    int set = 0, group = 0, key = 0;
    QString caption, link; // the link as the package has it
};

struct Picture {
    QString name;   // as the keys name it
    int entry = -1; // in the archive
    enum State { Add, Same, Renamed } state = Add;
    QString target; // its name in this store's pictures folder
};

struct Plan {
    QString file;
    QString storeNumber, storeName, date; // of the source
    QList<PackageSet> sets;
    QList<ItemKey> items;
    QList<LinkKey> links;
    QList<Picture> pictures;
    QStringList missingPictures; // named by keys, not in the package
    bool hasSpecial = false, hasCoupon = false;
    // The user's choice: replace this store's special and coupon keys.
    bool special = false, coupon = false;
    QList<int> usedNumbers; // sets of this store
};

// Reads and checks the package and makes the plan: set numbers, item matches in
// this store's inventory, picture names. Nothing is written. Empty with `error`
// naming the entry when the package cannot be taken.
std::optional<Plan> readPackage(const QString &file, QString *error, const Progress &progress = {});
// The link a key will hold in this store, and whether it leads into the package.
QString targetLink(const Plan &plan, const QString &link, bool *inside = nullptr);
// Whether this store has a set of number `target`, which the import would replace.
bool replacesSet(const Plan &plan, const QString &target);
// Empty when every set has a number of its own in this store (1 to 999), else why not.
QString checkTargets(const Plan &plan);
// What the import does with each part, in the user's words, for the preview and the report.
QString setOutcome(const Plan &plan, const PackageSet &set);
QString itemOutcome(const ItemKey &key);
QString linkOutcome(const Plan &plan, const LinkKey &key);
QString pictureOutcome(const Picture &picture);
// "set 07, column 1, key 3"
QString keyPlace(const Plan &plan, int set, int group, int key);
// The plan as text: the package, then one line a set, key and picture.
QString reportText(const Plan &plan);
// Writes the plan into the data folder: every file first as a temporary file,
// then all renamed in place, with a version kept of each file replaced. On
// failure the data folder is as it was and `error` says why.
bool writePlan(const Plan &plan, QString *error, const Progress &progress = {});

} // namespace setpackage
