#include "platform/Instance.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/KeyPreviewForm.h"
#include <QLineEdit>
#include <QLockFile>
#include <QTest>
#include <QUuid>
#include <gtest/gtest.h>

namespace {

class RecordingForm : public platform::KeyPreviewForm {
public:
    void Form_KeyDown(int &KeyCode, int Shift) override
    {
        downs << KeyCode;
        shifts << Shift;
        if (KeyCode == platform::vbKeyF10)
            KeyCode = 0;
    }
    void Form_KeyPress(int &KeyAscii) override
    {
        presses << KeyAscii;
        KeyAscii = KeyAscii == '#' ? 0 : QChar::toUpper(char32_t(KeyAscii));
    }
    QLineEdit *box = new QLineEdit(this);
    QList<int> downs, shifts, presses;
};

} // namespace

TEST(KeyPreview, OnlyTheFormHoldingTheReceiverSeesKeysBeforeItsControlsWithLegacyCodes)
{
    RecordingForm form;
    form.show();
    QTest::keyClick(form.box, Qt::Key_F10);
    QTest::keyClick(form.box, Qt::Key_A);
    QTest::keyClick(form.box, Qt::Key_B, Qt::ShiftModifier);
    QTest::keyClick(form.box, Qt::Key_NumberSign);
    QTest::keyClick(form.box, Qt::Key_Escape);
    QTest::keyClick(form.box, Qt::Key_PageUp);
    // Shift is a key of its own; "#" has no key code, only a character.
    EXPECT_EQ(form.downs, QList<int>({121, 65, 16, 66, 27, 33}));
    EXPECT_EQ(form.shifts.value(3), platform::vbShiftMask);
    EXPECT_EQ(form.presses, QList<int>({'a', 'b', '#', 27}));
    EXPECT_EQ(form.box->text(), "AB") << "a changed character reaches the control changed";

    QLineEdit outside; // only the form holding the receiver sees a key
    outside.show();
    QTest::keyClick(&outside, Qt::Key_X);
    EXPECT_EQ(form.downs.size(), 6);
    EXPECT_EQ(outside.text(), "x");
}

TEST(RunningInstance, TheSecondTestOnOneKeySeesTheFirst)
{
    platform::Instance::setKey("test-" + QUuid::createUuid().toString(QUuid::Id128));
    {
        QLockFile first(platform::Instance::lockPath());
        ASSERT_TRUE(first.tryLock(0));
        EXPECT_TRUE(platform::Instance::otherIsRunning());
    }
    EXPECT_FALSE(platform::Instance::otherIsRunning());
    EXPECT_FALSE(platform::Instance::otherIsRunning()) << "this process holds the lock itself";
    EXPECT_FALSE(platform::Instance::raise("no such title"));
    QObject owner;
    platform::Instance::listen(&owner, "Listening Title", [] {});
    EXPECT_TRUE(platform::Instance::raise("Listening Title"));
}
