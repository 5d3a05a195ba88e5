#include "screens/posButtons.h"
#include "hotkeys/hkeyPictures.h"
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

QString displayed(QString caption)
{
    caption.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    caption.replace('\r', '\n');
    return caption;
}

} // namespace

MyButton::MyButton(const QString &caption, QWidget *parent)
    : QPushButton(displayed(caption), parent), m_caption(caption)
{
    setAutoDefault(false);
}

void MyButton::setCaption(const QString &caption)
{
    m_caption = caption;
    setText(displayed(caption).replace('&', QLatin1String("&&")));
    update();
}

void MyButton::clearPicture()
{
    m_picture = QPixmap();
    update();
}

bool MyButton::setPicture(const QString &file)
{
    QPixmap p;
    if (!hotKeyPictureProblem(file).isEmpty() || !p.load(file))
        return false;
    m_picture = p;
    update();
    return true;
}

void MyButton::setCaptionalignment(int v)
{
    m_captionalignment = v;
    update();
}

QSize MyButton::sizeHint() const
{
    return QSize(84, 52);
}

QSize MyButton::minimumSizeHint() const
{
    return QSize(60, 36);
}

void MyButton::paintEvent(QPaintEvent *)
{
    QStylePainter p(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    p.drawControl(QStyle::CE_PushButtonBevel, option);

    QRect face = rect().adjusted(4, 4, -4, -4);
    if (!m_picture.isNull()) {
        const int side = std::min(face.height(), face.width() / 2);
        const QPixmap scaled =
            m_picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        const QPoint at(face.left(), face.top() + (face.height() - scaled.height()) / 2);
        p.drawPixmap(at, isEnabled() ? scaled
                                     : QPixmap(style()->generatedIconPixmap(QIcon::Disabled, scaled,
                                                                            &option)));
        face.setLeft(face.left() + scaled.width() + 3);
    }
    if (text().isEmpty())
        return;
    // A large key gets a larger caption; any caption shrinks until it fits the face.
    QFont font = this->font();
    const int flags = Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic;
    const int base = QFontInfo(font).pixelSize();
    for (int size = std::clamp(face.height() / 4, base, 26); size >= 8; --size) {
        font.setPixelSize(size);
        const QRect needed = QFontMetrics(font).boundingRect(face, flags, text());
        if (needed.height() <= face.height() && needed.width() <= face.width())
            break;
    }
    p.setFont(font);
    p.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    p.drawText(face, flags, text());
}

SpecialKeyPanel::SpecialKeyPanel(int index, QWidget *parent) : QPushButton(parent), m_index(index)
{
    setAutoDefault(false);
    setMinimumSize(150, 90);
    QFont f = font();
    f.setPixelSize(18);
    f.setBold(true);
    setFont(f);
}

void SpecialKeyPanel::setCaption(const QString &caption)
{
    m_caption = caption;
    // A button takes "&" for a mnemonic; the label shows it as typed.
    setText(displayed(caption).replace('&', QLatin1String("&&")));
}
