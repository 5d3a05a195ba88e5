#include "common/HelpPages.h"

namespace {

struct Entry {
    const char *name;
    const char *title;
    const char *html;
};

const char *const kSeeAlso = "<p><a href=\"help:contents\">All help pages</a></p>";

const Entry kPages[] = {
    {"contents", "Hot Keys Help",
     R"(<p>With this program you lay out the hot keys of the sales screen: sets of four columns
of eight keys. Each key rings up an item or opens another set.</p>
<ul>
<li><a href="help:setlist">The list of hot key sets</a>: add, change, remove, print, check.</li>
<li><a href="help:editor">Changing a set</a>: its title, column titles and keys.</li>
<li><a href="help:key">A key</a>: its label, item, picture or the set it opens.</li>
<li><a href="help:lookup">Finding an item</a> for a key.</li>
<li><a href="help:trial">Trying the sets out</a> as the sales screen shows them.</li>
<li><a href="help:special">Special and coupon keys</a> of the sales screen.</li>
</ul>
<p>The full guides are on the guides page of our web site; this window shows when that page
cannot be opened (no browser, or no network).</p>)"},
    {"setlist", "The List of Hot Key Sets",
     R"(<p>Every set of the store is listed with its number, its title and its four column
titles. The sales screen reads the same sets.</p>
<ul>
<li><b>Add</b> makes a new set with the next free number; <b>Change</b> (or a double click)
opens the set selected.</li>
<li><b>Delete</b> removes the set selected and every key of the other sets that opens it.
<b>Versions</b> brings back an earlier version or a removed set.</li>
<li><b>Hot Keys Trial</b> shows the sets as the sales screen does.</li>
<li><b>Special Keys</b> and <b>Store Coupons</b> change the keys of the sales screen that are
not in a set.</li>
<li><b>F9 Print</b>: Summary (this list), Detail (every key of every set) or Layout (each set as
it looks). The preview prints, saves a PDF or mails it.</li>
<li><b>F7 Check Sets</b> lists keys that lead nowhere or sell what the inventory no longer has;
<b>F8 Where Used</b> finds the keys that sell an item or open a set.</li>
<li><b>Esc Exit</b> closes the program.</li>
</ul>)"},
    {"editor", "Changing a Hot Key Set",
     R"(<p>The set as the sales screen shows it: its title at the top, four columns of eight keys
below their column titles.</p>
<ul>
<li>Type the set's title in the title box.</li>
<li>Touch a column title to name the column and give it a colour.</li>
<li>Touch a key to define it (see <a href="help:key">A key</a>).</li>
<li>Drag a key onto another to swap them; hold Ctrl when letting go to copy it.</li>
<li><b>Undo</b> and <b>Redo</b> (Ctrl+Z, Ctrl+Y) take back a change or make it again.</li>
<li><b>F10 Accept</b> saves the set; <b>Esc Cancel</b> leaves it as it was.</li>
</ul>)"},
    {"key", "Defining a Key",
     R"(<p>A key needs a label or a picture, and either an item to ring up or a set to open.</p>
<ul>
<li><b>Key Label</b>: the text on the key.</li>
<li>The item: its Stock Locater (S/L) or its Item ID; say which with <b>Link Item to key
by</b>. <b>F3 Find Item</b> looks the item up in the inventory and fills the key for you
(see <a href="help:lookup">Finding an item</a>).</li>
<li><b>Link To Hot Keys Set</b>: the key opens that set instead; <b>F4 Find Set</b> lists the
sets.</li>
<li><b>Set Picture</b>: a picture shown on the key.</li>
<li><b>Clear Key</b> empties the key. <b>F10 Accept</b> keeps what you typed, <b>Esc
Cancel</b> leaves the key as it was.</li>
</ul>
<p>A column title is named the same way: type the title, pick its colour, Accept.</p>)"},
    {"lookup", "Finding an Item",
     R"(<p>Type the start of a description, an S/L or an Item ID: the list moves to the items
that match. Touch a column heading to look up by that column instead.</p>
<ul>
<li><b>F3 Use Wildcard Search</b> finds text anywhere: type a part of it and press <b>Search
Now</b> (or Enter).</li>
<li>Pick an item with a double click or Enter: it goes on the key.</li>
<li><b>Esc</b> leaves without picking.</li>
</ul>)"},
    {"trial", "Trying the Hot Keys",
     R"(<p>The sets as the sales screen shows them. Touch a key: a key that opens a set shows
that set; a key that sells an item shows what the sales screen would ring up.</p>
<ul>
<li><b>First Set</b> (Home), <b>Back</b> (Page Up), <b>Next</b> (Page Down) and <b>Last
Set</b> (End) move through the sets.</li>
<li>Nothing is sold and nothing is saved here.</li>
<li><b>Cancel</b> (Esc) closes the trial.</li>
</ul>)"},
    {"special", "Special and Coupon Keys",
     R"(<p>The keys of the sales screen that are not in a hot key set: special keys (such as
Training or Verify Balance) and the store's coupon keys.</p>
<ul>
<li>Touch a key to change its label, its keyboard character or, for a coupon, its amount
(a number with at most two decimals).</li>
<li><b>F10 Accept</b> saves the keys for every station; <b>Esc Cancel</b> leaves them as they
were.</li>
</ul>)"},
    {"specialedit", "Changing a Special or Coupon Key",
     R"(<p>Type the key's label and the keyboard character that presses it on the sales screen;
a coupon key also has its amount, a number with at most two decimals.</p>
<ul>
<li><b>Clear</b> empties the key.</li>
<li><b>F10 Accept</b> keeps the change, <b>Esc Cancel</b> leaves the key as it was. The keys
are saved when you accept the list of keys.</li>
</ul>
<p><a href="help:special">Special and coupon keys</a></p>)"},
};

// The help contexts of the screens and the page each one opens.
const struct {
    const char *topic;
    const char *page;
} kContexts[] = {
    {"1", "setlist"},      {"5", "editor"}, {"6", "editor"},
    {"8", "editor"},       {"9", "key"},    {"16", "special"},
    {"17", "specialedit"}, {"19", "trial"}, {"look_up_items.htm", "lookup"},
};

HelpPage pageOf(const Entry &e)
{
    QString html = QString::fromUtf8(e.html);
    if (qstrcmp(e.name, "contents") != 0)
        html += QString::fromLatin1(kSeeAlso);
    return {QString::fromUtf8(e.title), "<h2>" + QString::fromUtf8(e.title) + "</h2>" + html};
}

} // namespace

HelpPage gHelp_pageNamed(const QString &name)
{
    for (const Entry &e : kPages)
        if (name == QLatin1String(e.name))
            return pageOf(e);
    return pageOf(kPages[0]);
}

HelpPage gHelp_page(const QString &sTopic)
{
    for (const auto &c : kContexts)
        if (sTopic == QLatin1String(c.topic))
            return gHelp_pageNamed(QLatin1String(c.page));
    return pageOf(kPages[0]);
}
