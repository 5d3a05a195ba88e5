#pragma once
#include <QString>

bool gfbFile_exists(const QString &sPath);
bool gfbFolder_exists(const QString &sPath);
// The part of a path behind its last separator ("\", "/" or ":").
QString gfsFile_name(const QString &sPath);
// True when the text has blanks at either end.
bool gfbText_outerBlanks(const QString &sText);
// Makes one folder (one level only); false with the system's error text in `error`.
bool gfbFolder_make(const QString &sPath, QString *error);
// Joins a folder and a name with one separator.
QString gfsPath_join(const QString &sFolder, const QString &sName);
