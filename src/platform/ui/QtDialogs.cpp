#include "platform/ui/QtDialogs.h"
#include "platform/AppInfo.h"
#include <QApplication>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>
#include <QStringList>

namespace platform {

namespace {

QMessageBox::StandardButtons buttonsOf(int style)
{
    switch (style & 7) {
    case vbOKCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case vbAbortRetryIgnore:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case vbYesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case vbYesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case vbRetryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case vbCritical:
        return QMessageBox::Critical;
    case vbQuestion:
        return QMessageBox::Question;
    case vbExclamation:
        return QMessageBox::Warning;
    case vbInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

int resultOf(int button)
{
    switch (button) {
    case QMessageBox::Cancel:
        return vbCancel;
    case QMessageBox::Abort:
        return vbAbort;
    case QMessageBox::Retry:
        return vbRetry;
    case QMessageBox::Ignore:
        return vbIgnore;
    case QMessageBox::Yes:
        return vbYes;
    case QMessageBox::No:
        return vbNo;
    default:
        return vbOK;
    }
}

// Box texts separate lines with a carriage return alone.
QString displayText(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace('\r', '\n');
    return text;
}

// A short message makes a narrow box, and the window manager then cuts its title to a
// few letters: the box is made wide enough for the title and the title bar's buttons.
void keepTitleReadable(QMessageBox &box)
{
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    if (!grid)
        return;
    QFont font = box.font();
    font.setBold(true);
    const int width = QFontMetrics(font).horizontalAdvance(box.windowTitle()) + 140;
    grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
                  grid->rowCount(), 0, 1, grid->columnCount());
}

} // namespace

int QtDialogs::msgBox(const QString &text, int style, const QString &title)
{
    QMessageBox box(iconOf(style), title, displayText(text), buttonsOf(style),
                    QApplication::activeWindow());
    const QList<QAbstractButton *> buttons = box.buttons();
    if ((style & vbDefaultButton2) && buttons.size() > 1)
        box.setDefaultButton(qobject_cast<QPushButton *>(buttons.at(1)));
    keepTitleReadable(box);
    return resultOf(box.exec());
}

QString QtDialogs::inputBox(const QString &prompt, const QString &title, const QString &defaultText)
{
    bool ok = false;
    QString s = QInputDialog::getText(QApplication::activeWindow(), title, displayText(prompt),
                                      QLineEdit::Normal, defaultText, &ok);
    return ok ? s : QString();
}

QString QtDialogs::openFileName(const QString &title, const QString &folder, const QString &filter)
{
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), title, folder,
                                        qtFilter(filter));
}

QString QtDialogs::openFileNameFilter(const QString &title, const QString &folder,
                                      const QString &filter, int selectedFilter)
{
    const QString filters = qtFilter(filter);
    QString selected = filters.split(QLatin1String(";;")).value(selectedFilter - 1);
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), title, folder, filters,
                                        &selected);
}

QString QtDialogs::saveFileName(const QString &title, const QString &path, const QString &filter)
{
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), title, path,
                                        qtFilter(filter));
}

QString QtDialogs::folderName(const QString &title, const QString &start)
{
    return QFileDialog::getExistingDirectory(QApplication::activeWindow(), title, start);
}

QString qtFilter(const QString &legacyFilter)
{
    const QStringList parts = legacyFilter.split('|');
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString name = parts[i].trimmed();
        if (!name.endsWith(')'))
            name += " (" + QString(parts[i + 1]).replace(';', ' ') + ')';
        filters << name;
    }
    return filters.join(QLatin1String(";;"));
}

} // namespace platform
