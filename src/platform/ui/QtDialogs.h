#pragma once
#include "platform/Dialogs.h"

namespace platform {

class QtDialogs : public Dialogs {
public:
    int msgBox(const QString &text, int style, const QString &title) override;
    QString inputBox(const QString &prompt, const QString &title,
                     const QString &defaultText) override;
    QString openFileName(const QString &title, const QString &folder,
                         const QString &filter) override;
    QString openFileNameFilter(const QString &title, const QString &folder, const QString &filter,
                               int selectedFilter) override;
    QString saveFileName(const QString &title, const QString &path, const QString &filter) override;
    QString folderName(const QString &title, const QString &start) override;
};

// "Picture (*.jpg)|*.jpg" as a Qt name filter list.
QString qtFilter(const QString &legacyFilter);

} // namespace platform
