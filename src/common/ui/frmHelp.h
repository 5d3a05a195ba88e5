#pragma once
#include <QDialog>

class QPushButton;
class QTextBrowser;

// The program's own help window: one page of help with the page's title;
// links lead to the other pages.
class frmHelp : public QDialog {
    Q_OBJECT
public:
    explicit frmHelp(QWidget *parent = nullptr);

    void showTopic(const QString &sTopic);
    void showPage(const QString &name);

    QTextBrowser *txtPage;
    QPushButton *cmdClose;
};

// The help of a help context, in the help window, modal over the active screen.
void gpHelp_show(const QString &sTopic);
