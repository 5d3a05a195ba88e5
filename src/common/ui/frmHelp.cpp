#include "common/ui/frmHelp.h"
#include "common/HelpPages.h"
#include "platform/Shell.h"
#include "platform/ui/Modal.h"
#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace {

void showHelpPage(frmHelp &form, const HelpPage &page)
{
    form.setWindowTitle(page.title);
    form.txtPage->setHtml(page.html);
}

} // namespace

frmHelp::frmHelp(QWidget *parent) : QDialog(parent)
{
    setObjectName("frmHelp");
    txtPage = new QTextBrowser(this);
    txtPage->setObjectName("txtPage");
    txtPage->setOpenLinks(false);
    QFont bigger = txtPage->font();
    bigger.setPointSizeF(bigger.pointSizeF() + 1);
    txtPage->setFont(bigger);
    cmdClose = new QPushButton("Esc Close", this);
    cmdClose->setObjectName("cmdClose");
    cmdClose->setMinimumHeight(34);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);
    auto *form = new QVBoxLayout(this);
    form->addWidget(txtPage, 1);
    form->addLayout(buttons);
    resize(560, 480);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(txtPage, &QTextBrowser::anchorClicked, this, [this](const QUrl &url) {
        if (url.scheme() == "help")
            showPage(url.path());
        else
            platform::ShellPort::get().openUrl(url.toString());
    });
}

void frmHelp::showTopic(const QString &sTopic)
{
    showHelpPage(*this, gHelp_page(sTopic));
}

void frmHelp::showPage(const QString &name)
{
    showHelpPage(*this, gHelp_pageNamed(name));
}

void gpHelp_show(const QString &sTopic)
{
    frmHelp form(QApplication::activeModalWidget() ? QApplication::activeModalWidget()
                                                   : QApplication::activeWindow());
    form.showTopic(sTopic);
    platform::showModal(form);
}
