#include "screens/posButtons.h"
#include "hotkeys/hkeyPictures.h"
#include <QPainter>
#include <QRegularExpression>
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

namespace {

constexpr int kCaptionFlags = Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int kSmallestCaption = 8; // pixels

} // namespace

// The picture sits at the left, scaled to the key's height.
QRect MyButton::pictureRect() const
{
    const QRect face = rect().adjusted(4, 4, -4, -4);
    if (m_picture.isNull())
        return QRect(face.topLeft(), QSize(0, 0));
    const int side = std::min(face.height(), face.width() / 2);
    const QSize scaled = m_picture.size().scaled(side, side, Qt::KeepAspectRatio);
    return QRect(QPoint(face.left(), face.top() + (face.height() - scaled.height()) / 2), scaled);
}

QRect MyButton::captionFace() const
{
    QRect face = rect().adjusted(4, 4, -4, -4);
    if (!m_picture.isNull())
        face.setLeft(face.left() + pictureRect().width() + 3);
    return face;
}

// A large key gets a larger caption; any caption shrinks until it fits the face.
QFont MyButton::captionFont(const QRect &face, bool *fits) const
{
    QFont font = this->font();
    const int base = QFontInfo(font).pixelSize();
    for (int size = std::clamp(face.height() / 4, base, 26); size >= kSmallestCaption; --size) {
        font.setPixelSize(size);
        const QRect needed = QFontMetrics(font).boundingRect(face, kCaptionFlags, text());
        if (needed.height() <= face.height() && needed.width() <= face.width()) {
            if (fits)
                *fits = true;
            return font;
        }
    }
    if (fits)
        *fits = false;
    return font;
}

QString MyButton::captionProblem() const
{
    const QRect face = captionFace();
    bool fits = false;
    const QFont font = captionFont(face, &fits);
    if (fits || text().isEmpty())
        return QString();
    const QFontMetrics metrics(font);
    static const QRegularExpression blanks("\\s+");
    for (const QString &word : displayed(m_caption).split(blanks, Qt::SkipEmptyParts)) {
        if (metrics.horizontalAdvance(word) > face.width())
            return "the word \"" + word + "\" is cut";
    }
    const int lines = metrics.boundingRect(face, kCaptionFlags, text()).height() /
                      std::max(1, metrics.lineSpacing());
    return QString("it takes %1 lines where %2 fit")
        .arg(lines)
        .arg(face.height() / std::max(1, metrics.lineSpacing()));
}

void MyButton::paintEvent(QPaintEvent *)
{
    QStylePainter p(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    p.drawControl(QStyle::CE_PushButtonBevel, option);

    if (!m_picture.isNull()) {
        const QRect at = pictureRect();
        const QPixmap scaled =
            m_picture.scaled(at.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        p.drawPixmap(at.topLeft(),
                     isEnabled()
                         ? scaled
                         : QPixmap(style()->generatedIconPixmap(QIcon::Disabled, scaled, &option)));
    }
    if (text().isEmpty())
        return;
    const QRect face = captionFace();
    p.setFont(captionFont(face));
    p.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    p.drawText(face, kCaptionFlags, text());
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
