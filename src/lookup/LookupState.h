#pragma once
#include <QString>
#include <QVector>

// The lookup's process state: it outlives the screen, so the next opening finds
// it as the last one left it.
extern bool gbLookupFind;
extern QString gsLookupCode;
extern qint16 giLookupKind;   // 1 inventory, 99 name
extern qint16 giSelectColumn; // 0 here: no Qty or Select column in front
extern QString gsVendorFilter;
extern qint16 giVendorScope;
extern bool gbWildcard;
extern bool gbStopSearch;
extern bool gbTableBusy;
extern bool gbKeyEdit;
extern bool gbLookupClosing;
extern bool gbLoadAbort;
extern qint16 giGridRows;
extern QVector<qint32> gColumnEdges;

// What the list engine asks of the screen that drives it. The engine runs
// without a screen too (a null form), which is how it is tested.
class LookupForm {
public:
    virtual ~LookupForm() = default;
    virtual void setFormCaption(const QString &caption) = 0;
    virtual void setSortCaption(const QString &caption) = 0; // lblPad
    virtual void setExitCaption(const QString &caption) = 0;
    virtual void hideAction(int index) = 0;
    // The search box when it is visible and enabled.
    virtual void focusSearchBox() = 0;
    // The list, when the form is visible and enabled.
    virtual void focusList() = 0;
    virtual void closeLookup() = 0;
};
