#include "hotkeys/hkeySetCheck.h"
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Files.h"
#include "common/sm_Text.h"
#include "common/zelFormats.h"
#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPictures.h"
#include "settings/clsDataPath.h"
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <cmath>

namespace setcheck {
namespace {

// One set file as read, with what the reader had to skip.
struct SetText {
    Finding set; // file, number and title
    HotKeySet groups;
    QStringList problems; // the file as a whole
    bool read = false;
};

// The file a link opens, as the sales screen and the trial panel name it.
QString linkedFile(const QString &link)
{
    return QFileInfo(hotKeySetPath(gfsText_pad(1, 2, link, "0"))).fileName();
}

bool isSetName(const QString &name)
{
    return hotKeySetNumber(name).size() >= 2;
}

// Lone LF or lone CR: the reader takes them, the sales stations may not.
bool hasForeignLineEnds(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'))
            return true;
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r'))
            return true;
    }
    return false;
}

QStringList unreadable(const QString &text, const QStringList &skipped)
{
    if (text.isEmpty())
        return {"the file is empty: the set has no title and no keys"};
    QStringList problems;
    const QList<QStringView> lines = textfile::splitLineViews(text);
    if (lines.isEmpty() || !lines.first().contains(QLatin1String("[SET]")))
        problems << "line 1 is not the title line ([SET]): the set shows no title";
    return problems << skipped;
}

void readProblems(SetText &s, const QString &text, const QStringList &skipped)
{
    s.problems << unreadable(text, skipped);
    if (!text.isEmpty() && hasForeignLineEnds(text))
        s.problems << "its lines do not all end in CR LF, as this program writes them (a hand "
                      "edit?): a sales station may read the set differently";
}

SetText readSet(const QString &name)
{
    SetText s;
    s.set.fileName = name;
    s.set.number = hotKeySetShownDigits(name);
    const QString path = gDataPath.DataPath() + '/' + name;
    QString error;
    if (!textfile::readBytes(path, s.set.bytes, &error)) {
        s.problems << (QFileInfo::exists(path)
                           ? "could not be read (" + error +
                                 "): make sure the data folder can be read and check again"
                           : QString("was removed while the check ran"));
        return s;
    }
    s.read = true;
    const QString text = textfile::fromCp1252(s.set.bytes);
    hotKeySetClear(s.groups);
    QStringList skipped;
    s.set.title = hotKeySetParse(text, s.groups, &skipped);
    readProblems(s, text, skipped);
    return s;
}

Finding at(const SetText &s, int group, int key, Kind kind, const QString &text)
{
    Finding f = s.set;
    f.group = group;
    f.key = key;
    f.kind = kind;
    f.text = text;
    return f;
}

// Walks the sets as the set list lists them; `each` sees every file in turn.
template <typename Each> Result walk(const Progress &progress, Each each)
{
    Result result;
    QStringList names = hotKeySetFiles();
    names.removeIf([](const QString &n) { return n.right(1).toLower() == "x"; });
    for (int i = 0; i < names.size(); ++i) {
        if (progress && !progress(i, static_cast<int>(names.size()))) {
            result.canceled = true;
            break;
        }
        each(readSet(names[i]), result.findings);
        ++result.sets;
    }
    return result;
}

bool isBlank(const QString &s)
{
    return !conv::AboveBlank(conv::Trim(s));
}

} // namespace

QString itemKey(const QString &item, bool byId)
{
    return (byId ? conv::Trim(item) : conv::RTrim(gfsSL_toStored(gfsSL_normalize(item)))).toUpper();
}

namespace {

QString itemText(const HotKeyButton &b)
{
    return (b.IdSelect == "Yes" ? "Item ID " : "S/L ") + conv::Trim(b.Item);
}

QString setText(const QString &link)
{
    return gfsText_pad(1, 2, conv::Trim(link), "0");
}

// Keys that sell items wait until a batch of sets is read; the inventory is then
// asked once for every item of the batch that it was not asked for yet.
class ItemChecker {
public:
    explicit ItemChecker(const ItemLookup &lookup) : m_lookup(lookup) {}
    bool failed = false;

    void add(const Finding &at, const HotKeyButton &b)
    {
        const bool byId = b.IdSelect == "Yes";
        // A special code such as "~NONSTK" needs no inventory row.
        if (!byId && gfbInventory_IsSpecialSL(b.Item))
            return;
        m_waiting << Waiting{at, itemText(b), itemKey(b.Item, byId), byId};
    }
    void resolve(QList<Finding> &out)
    {
        ask(false);
        ask(true);
        for (Waiting &w : m_waiting) {
            const ItemState state = m_known[w.byId].value(w.key, ItemState::Found);
            if (state == ItemState::Found)
                continue;
            const bool missing = state == ItemState::Missing;
            w.at.kind = missing ? Kind::ItemMissing : Kind::ItemDeleted;
            w.at.text = "sells " + w.text +
                        (missing ? ", which is not in the inventory"
                                 : ", which is marked deleted in the inventory");
            out << w.at;
        }
        m_waiting.clear();
    }

private:
    struct Waiting {
        Finding at;
        QString text, key;
        bool byId;
    };
    void ask(bool byId)
    {
        QStringList keys;
        QSet<QString> listed;
        for (const Waiting &w : m_waiting) {
            if (w.byId == byId && !m_known[byId].contains(w.key) && !listed.contains(w.key)) {
                keys << w.key;
                listed << w.key;
            }
        }
        if (keys.isEmpty())
            return;
        const std::optional<QHash<QString, ItemState>> states =
            failed ? std::nullopt : m_lookup(keys, byId);
        failed = !states;
        // Unread items count as found: the fault is told once, not for every item.
        for (const QString &key : keys)
            m_known[byId][key] = states ? states->value(key, ItemState::Missing) : ItemState::Found;
    }
    const ItemLookup &m_lookup;
    // By S/L and by Item ID apart: the same text may name two items.
    QHash<QString, ItemState> m_known[2];
    QList<Waiting> m_waiting;
};

struct CheckState {
    QSet<QString> present; // file names of the listing
    QSet<QString> opened;  // file names that a key of another set opens
    QList<Finding> sets;   // every set that was read, for the sets nobody opens
    const Drawing &drawing;
};

QString keyPlace(int g, int k)
{
    return QString("column %1 key %2").arg(g).arg(k);
}

// Two keys of a set that sell one item: told at the later key, as information.
void checkSameItems(const SetText &s, QList<Finding> &out)
{
    QHash<QString, QString> first; // kind and item key, the place of its first key
    for (int g = 1; g <= 4; ++g) {
        for (int k = 1; k <= 8; ++k) {
            const HotKeyButton &b = s.groups[g].Buttons[k];
            const bool byId = b.IdSelect == "Yes";
            if (!isBlank(b.LinkSet) || isBlank(b.Item) || (!byId && b.IdSelect != "No") ||
                (!byId && gfbInventory_IsSpecialSL(b.Item)))
                continue;
            const QString item = (byId ? "I " : "S ") + itemKey(b.Item, byId);
            if (!first.contains(item)) {
                first.insert(item, keyPlace(g, k));
                continue;
            }
            out << at(s, g, k, Kind::SameItem,
                      "sells " + itemText(b) + ", as " + first[item] +
                          " does (for information: often a slip, sometimes meant)");
        }
    }
}

void checkLabel(const SetText &s, int g, int k, const CheckState &state, QList<Finding> &out)
{
    const HotKeyButton &b = s.groups[g].Buttons[k];
    if (!isBlank(b.LinkSet) && isBlank(b.Caption))
        out << at(s, g, k, Kind::LinkNoLabel,
                  "opens set " + setText(b.LinkSet) +
                      " but has no label, so nobody can tell where it leads: give it one");
    if (isBlank(b.Caption) || !state.drawing.labelProblem)
        return;
    const QString problem = state.drawing.labelProblem(b, g, k);
    if (!problem.isEmpty())
        out << at(s, g, k, Kind::LabelCut,
                  "shows the label \"" + b.Caption +
                      "\", which does not fit the key as the sales screen draws it: " + problem);
}

void checkContrast(const SetText &s, int g, const CheckState &state, QList<Finding> &out)
{
    const HotKeyGroup &group = s.groups[g];
    if (!state.drawing.contrast || group.Color == kButtonFaceColor)
        return;
    const auto labelled = [](const HotKeyButton &b) { return !isBlank(b.Caption); };
    if (std::none_of(group.Buttons.begin() + 1, group.Buttons.end(), labelled))
        return;
    const double ratio = state.drawing.contrast(group.Color);
    if (ratio >= kMinContrast)
        return;
    const QString colour = gfsHotKeyColor_name(group.Color);
    out << at(s, g, 0, Kind::LowContrast,
              QString("its labels are hard to read on its colour %1 (contrast %2:1, below "
                      "3:1 as the sales screen draws them)")
                  .arg(colour.isEmpty() ? QString("silver") : colour)
                  .arg(std::floor(ratio * 10) / 10, 0, 'f', 1));
}

void checkItem(const SetText &s, int g, int k, ItemChecker &items, QList<Finding> &out)
{
    const HotKeyButton &b = s.groups[g].Buttons[k];
    if (b.IdSelect == "Yes" || b.IdSelect == "No")
        items.add(at(s, g, k, Kind::ItemMissing, QString()), b);
    else
        out << at(s, g, k, Kind::NoItemKind,
                  "sells \"" + conv::Trim(b.Item) +
                      "\" but does not say whether it is an S/L or an Item ID, so it sells "
                      "nothing: open the key and choose one");
}

void checkKey(const SetText &s, int g, int k, CheckState &state, ItemChecker &items,
              QList<Finding> &out)
{
    const HotKeyButton &b = s.groups[g].Buttons[k];
    if (!isBlank(b.LinkSet)) {
        const QString file = linkedFile(b.LinkSet);
        if (file == s.set.fileName)
            out << at(s, g, k, Kind::SelfLink, "opens its own set, so it does nothing useful");
        else if (!state.present.contains(file))
            out << at(s, g, k, Kind::MissingLink,
                      "opens set " + setText(b.LinkSet) +
                          ", which is no longer in the data folder: the key leads nowhere");
        else
            state.opened << file;
    } else if (!isBlank(b.Item)) {
        checkItem(s, g, k, items, out);
    }
    if (!isBlank(b.Icon)) {
        const QString problem = hotKeyPictureProblem(gsHotKeyPicturePath + b.Icon);
        if (!problem.isEmpty())
            out << at(s, g, k, Kind::MissingPicture,
                      "shows the picture \"" + b.Icon + "\", which " + problem);
    }
    if (!isBlank(b.Icon) && isBlank(b.Caption) && isBlank(b.Item) && isBlank(b.LinkSet))
        out << at(s, g, k, Kind::LeftOver,
                  "has a picture but no label, item or link: a left-over that does nothing");
    checkLabel(s, g, k, state, out);
}

void checkColumn(const SetText &s, int g, QList<Finding> &out)
{
    const HotKeyGroup &group = s.groups[g];
    const QString colour = gfsHotKeyColor_name(group.Color);
    if (colour.isEmpty() || group.Color == kButtonFaceColor || !isBlank(group.Caption))
        return;
    for (int k = 1; k <= 8; ++k) {
        const HotKeyButton &b = group.Buttons[k];
        if (!isBlank(b.Caption) || !isBlank(b.Item) || !isBlank(b.LinkSet) || !isBlank(b.Icon))
            return;
    }
    out << at(s, g, 0, Kind::LeftOver,
              "has the colour " + colour + " but no title and no keys: a left-over");
}

void checkSet(const SetText &s, CheckState &state, ItemChecker &items, QList<Finding> &out)
{
    if (!isSetName(s.set.fileName))
        out << at(s, 0, 0, Kind::NotASet,
                  "is not named as a set (HKSET, a number of two digits or more, .SDF), so no "
                  "key can open it: rename or remove " +
                      s.set.fileName);
    for (const QString &problem : s.problems)
        out << at(s, 0, 0, s.read ? Kind::BadLine : Kind::Unreadable, problem);
    if (!s.read)
        return;
    if (isSetName(s.set.fileName))
        state.sets << s.set;
    for (int g = 1; g <= 4; ++g) {
        for (int k = 1; k <= 8; ++k) checkKey(s, g, k, state, items, out);
        checkColumn(s, g, out);
        checkContrast(s, g, state, out);
    }
    checkSameItems(s, out);
}

// By set, then column and key; what concerns a set as a whole comes first.
bool lessBySet(const Finding &a, const Finding &b)
{
    if (a.number.isEmpty() != b.number.isEmpty())
        return b.number.isEmpty();
    if (a.number != b.number)
        return conv::Val(a.number) < conv::Val(b.number);
    return std::pair(a.group, a.key) < std::pair(b.group, b.key);
}

// Sets read between two questions to the inventory: some thousand items at a time.
constexpr int kSetsPerBatch = 32;

} // namespace

Result checkSets(const ItemLookup &lookup, const Progress &progress, const Drawing &drawing)
{
    CheckState state{{}, {}, {}, drawing};
    for (const QString &name : hotKeySetFiles()) state.present << name;
    ItemChecker items(lookup);
    int read = 0;
    Result result = walk(progress, [&](const SetText &s, QList<Finding> &out) {
        checkSet(s, state, items, out);
        if (++read % kSetsPerBatch == 0)
            items.resolve(out);
    });
    items.resolve(result.findings);
    if (result.canceled)
        return result;
    for (const Finding &set : state.sets) {
        if (!state.opened.contains(set.fileName)) {
            Finding f = set;
            f.kind = Kind::NotOpened;
            f.text = "no key of another set opens this set (for information: the sales screen "
                     "may open it from elsewhere)";
            result.findings << f;
        }
    }
    std::stable_sort(result.findings.begin(), result.findings.end(), lessBySet);
    result.findings << checkKeyFiles();
    if (items.failed) {
        Finding f;
        f.kind = Kind::InventoryFault;
        f.text = "The inventory could not be read, so no item was checked: check the database "
                 "and run the check again.";
        result.findings.prepend(f);
    }
    return result;
}

QStringList slForms(const QString &typed)
{
    const QString code = conv::Trim(typed);
    static const QRegularExpression shortNumber("^([0-9]{1,6})(?:\\.([0-9]))?$");
    const QRegularExpressionMatch m = shortNumber.match(code);
    if (!m.hasMatch())
        return {code};
    const QString full = m.captured(1).rightJustified(7, '0') + '.' +
                         (m.captured(2).isEmpty() ? QString("0") : m.captured(2));
    return {code, full};
}

QList<Finding> checkKeyFiles()
{
    QList<Finding> out;
    for (const QString name : {"SPECIAL.BDF", "COUPON.BDF"}) {
        QString text;
        if (!textfile::readText(gDataPath.DataPath() + '/' + name, text))
            continue;                 // a missing file is keys not defined yet
        QHash<QString, int> firstUse; // keyboard character, key
        for (QStringView view : textfile::splitLineViews(text)) {
            const QString line = view.toString();
            Finding f;
            f.fileName = name;
            f.title = name == "SPECIAL.BDF" ? "Special keys" : "Coupon keys";
            f.key = static_cast<int>(conv::Val(gfsTagValue(line, "[BUTTON]", "[")));
            f.kind = Kind::KeyFile;
            const QString label = gfsTagValue(line, "[CAPTION]", "[");
            const QString key = gfsTagValue(line, "[KEY]", "[");
            const QString amount = gfsTagValue(line, "[VALUE]", "[");
            if (key == kCouponMarker && !gfbCouponAmount_valid(amount))
                f.text = "coupon key \"" + label + "\" has the amount \"" + amount +
                         "\", which is not a number with at most two decimals";
            else if (key != kCouponMarker && !isBlank(key) && firstUse.contains(key))
                f.text = "\"" + label + "\" uses the keyboard character \"" + key + "\", as key " +
                         QString::number(firstUse[key]) +
                         " does: the keyboard reaches only one of them";
            else if (key != kCouponMarker && !isBlank(key))
                firstUse[key] = f.key;
            if (!f.text.isEmpty())
                out << f;
        }
    }
    return out;
}

QStringList unreadableParts(const QString &fileName)
{
    const QString path = gDataPath.DataPath() + '/' + fileName;
    QString text, error;
    if (!textfile::readText(path, text, &error))
        return {"it could not be read (" + error + ")"};
    HotKeySet groups;
    hotKeySetClear(groups);
    QStringList skipped;
    hotKeySetParse(text, groups, &skipped);
    return unreadable(text, skipped);
}

Result whereItemUsed(const Item &item, const Progress &progress)
{
    QSet<QString> sls;
    for (const QString &form : isBlank(item.sl) ? QStringList() : slForms(item.sl))
        sls << itemKey(form, false);
    const QString id = conv::Trim(item.itemId);
    auto sells = [&](const HotKeyButton &b) {
        if (!isBlank(b.LinkSet) || isBlank(b.Item))
            return false;
        if (b.IdSelect == "No")
            return sls.contains(itemKey(b.Item, false));
        return b.IdSelect == "Yes" && !id.isEmpty() &&
               conv::Trim(b.Item).compare(id, Qt::CaseInsensitive) == 0;
    };
    return walk(progress, [&](const SetText &s, QList<Finding> &out) {
        for (int g = 1; g <= 4; ++g) {
            for (int k = 1; k <= 8; ++k) {
                const HotKeyButton &b = s.groups[g].Buttons[k];
                if (sells(b))
                    out << at(s, g, k, Kind::Sells, "\"" + b.Caption + "\" sells " + itemText(b));
            }
        }
    });
}

Result whereSetUsed(const QString &sSetNumber, const Progress &progress)
{
    const QString target = linkedFile(conv::Trim(sSetNumber));
    return walk(progress, [&](const SetText &s, QList<Finding> &out) {
        for (int g = 1; g <= 4; ++g) {
            for (int k = 1; k <= 8; ++k) {
                const HotKeyButton &b = s.groups[g].Buttons[k];
                if (!isBlank(b.LinkSet) && linkedFile(b.LinkSet) == target)
                    out << at(s, g, k, Kind::Opens,
                              "\"" + b.Caption + "\" opens set " + setText(b.LinkSet));
            }
        }
    });
}

} // namespace setcheck
