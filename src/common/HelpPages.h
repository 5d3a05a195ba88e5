#pragma once
#include <QString>

// The program's own help: one short page per help context, for when the guides
// page cannot be opened.
struct HelpPage {
    QString title;
    QString html;
};

// The page for a help context ("1", "6", "look_up_items.htm"...); a context
// without a page of its own gets the contents page, so help always answers.
HelpPage gHelp_page(const QString &sTopic);
// The page a help link ("help:editor") leads to; the contents page if none.
HelpPage gHelp_pageNamed(const QString &name);
