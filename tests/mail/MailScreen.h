#pragma once
#include "mail/MailFixture.h"
#include "mail/frmSendMail.h"
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace testing_support {

// A touch on a box of the mail screen, which makes it the keyboard's target.
inline void touch(QWidget *box)
{
    auto *body = qobject_cast<QPlainTextEdit *>(box);
    QTest::mouseClick(body ? body->viewport() : box, Qt::LeftButton);
}

// Keys of the mail screen's keyboard, by the characters they type.
inline void keys(frmSendMail &f, const QString &text)
{
    for (QChar c : text) {
        QPushButton *key = nullptr;
        for (QPushButton *k : f.cmdKeyPad)
            if (k->property("Tag").toString() == c.toUpper() || (c == ' ' && k->text() == "Space"))
                key = k;
        ASSERT_TRUE(key) << "no key for " << QString(c).toStdString();
        QTest::mouseClick(key, Qt::LeftButton);
    }
}

// A touch on the box, then its text typed on the on-screen keyboard.
inline void type(frmSendMail &f, QWidget *box, const QString &text)
{
    touch(box);
    keys(f, text);
}

} // namespace testing_support
