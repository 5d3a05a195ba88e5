#include "candybutton/CandyButton.h"
#include "common/Conversions.h"
#include "platform/ui/KeyCodes.h"
#include <QApplication>
#include <QBuffer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSettings>
#include <algorithm>

namespace {

struct Scheme {
    quint32 up, hover, down, bright;
};

constexpr Scheme schemes[] = {
    {0xD06720, 0xE99950, 0xA06710, 0xFFEDB0}, {0xD09060, 0xE06000, 0xA98050, 0xFFFAFA},
    {0x800000, 0xA00000, 0xF00000, 0xFF0000}, {0x000080, 0x0000A0, 0x0000F0, 0x0000FF},
    {0x008000, 0x00A000, 0x00C000, 0x00FF00}, {0x008080, 0x00A0A0, 0x00C0C0, 0x00FFFF},
};

// The colours a new control starts with.
constexpr quint32 defaultHover = 0xFFC090;
constexpr quint32 defaultUp = 0xE99950;
constexpr quint32 defaultDown = 0xE99950;
constexpr quint32 defaultBright = 0xFFEDB0;
constexpr quint32 defaultHighLite = 0x00FF00;

int legacyButton(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::RightButton:
        return 2;
    case Qt::MiddleButton:
        return 4;
    default:
        return 0;
    }
}

bool isEnter(const QKeyEvent &event)
{
    return platform::legacyKeyCode(event) == platform::vbKeyReturn;
}

// Values of a bag read back from a settings file come as text: convert each
// explicitly, and a value that does not convert takes its default.
bool readBool(const QVariantMap &bag, const QString &name, bool def)
{
    const QVariant v = bag.value(name);
    if (!v.isValid())
        return def;
    if (v.typeId() == QMetaType::Bool)
        return v.toBool();
    return conv::CBool(v.toString()).value_or(def);
}

qint64 readNumber(const QVariantMap &bag, const QString &name, qint64 def)
{
    bool ok = false;
    const qint64 n = bag.value(name).toLongLong(&ok);
    return ok ? n : def;
}

QByteArray pictureBytes(const QImage &picture)
{
    QByteArray bytes;
    if (picture.isNull())
        return bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

// The bag keeps what differs from the default, as the legacy property bag did.
void writeProperty(QVariantMap &bag, const QString &name, const QVariant &value,
                   const QVariant &def)
{
    if (value != def)
        bag.insert(name, value);
}

// The bag's names, in the order they are written.
const QStringList &propertyNames()
{
    static const QStringList names = {"Enabled",
                                      "Font",
                                      "Caption",
                                      "IconHighLite",
                                      "IconHighLiteColor",
                                      "CaptionHighLite",
                                      "CaptionHighLiteColor",
                                      "ForeColor",
                                      "Picture",
                                      "PictureAlignment",
                                      "Style",
                                      "Checked",
                                      "ColorButtonHover",
                                      "ColorButtonUp",
                                      "ColorButtonDown",
                                      "BorderBrightness",
                                      "ColorBright",
                                      "DisplayHand",
                                      "ColorScheme"};
    return names;
}

} // namespace

CandyButton::CandyButton(QWidget *parent, const QString &name)
    : QWidget(parent), m_Font(QWidget::font()), m_subclass("CandyButton", this)
{
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

CandyButton::~CandyButton()
{
    m_subclass.sc_ReleaseAll();
}

void CandyButton::InitProperties()
{
    m_ColorButtonHover = defaultHover;
    m_ColorButtonUp = defaultUp;
    m_ColorButtonDown = defaultDown;
    m_ColorBright = defaultBright;
    m_Enabled = true;
    m_surface = QImage();
    m_Caption = objectName();
    m_Ready = true;
}

void CandyButton::ReadProperties(const QVariantMap &bag)
{
    const QFont ambient = parentWidget() ? parentWidget()->font() : QApplication::font();
    m_Enabled = readBool(bag, "Enabled", true);
    QWidget::setEnabled(m_Enabled);
    m_Font = ambient;
    if (bag.contains("Font"))
        m_Font.fromString(bag.value("Font").toString());
    QWidget::setFont(m_Font);
    m_Caption = bag.value("Caption", objectName()).toString();
    m_IconHighLite = readBool(bag, "IconHighLite", false);
    m_IconHighLiteColor = quint32(readNumber(bag, "IconHighLiteColor", defaultHighLite));
    m_CaptionHighLite = readBool(bag, "CaptionHighLite", false);
    m_CaptionHighLiteColor = quint32(readNumber(bag, "CaptionHighLiteColor", defaultHighLite));
    m_ForeColor = quint32(readNumber(bag, "ForeColor", 0));
    m_Picture = QImage::fromData(bag.value("Picture").toByteArray());
    m_PictureAlignment = quint8(std::clamp<qint64>(readNumber(bag, "PictureAlignment", 0), 0, 3));
    m_Style = qint16(readNumber(bag, "Style", 0));
    m_Checked = readBool(bag, "Checked", false);
    m_ColorButtonHover = quint32(readNumber(bag, "ColorButtonHover", defaultHover));
    m_ColorButtonUp = quint32(readNumber(bag, "ColorButtonUp", defaultUp));
    m_ColorButtonDown = quint32(readNumber(bag, "ColorButtonDown", defaultDown));
    m_BorderBrightness =
        qint16(std::clamp<qint64>(readNumber(bag, "BorderBrightness", 0), -100, 100));
    m_ColorBright = quint32(readNumber(bag, "ColorBright", defaultBright));
    m_DisplayHand = readBool(bag, "DisplayHand", false);
    m_ColorScheme = qint32(readNumber(bag, "ColorScheme", 0));

    setCursor(m_DisplayHand ? Qt::PointingHandCursor : Qt::ArrowCursor);
    trackMouse();
    m_Ready = true;
}

QVariantMap CandyButton::WriteProperties() const
{
    const QFont ambient = parentWidget() ? parentWidget()->font() : QApplication::font();
    QVariantMap bag;
    writeProperty(bag, "Enabled", m_Enabled, true);
    writeProperty(bag, "Font", m_Font.toString(), ambient.toString());
    writeProperty(bag, "Caption", m_Caption, objectName());
    writeProperty(bag, "IconHighLite", m_IconHighLite, false);
    writeProperty(bag, "IconHighLiteColor", m_IconHighLiteColor, defaultHighLite);
    writeProperty(bag, "CaptionHighLite", m_CaptionHighLite, false);
    writeProperty(bag, "CaptionHighLiteColor", m_CaptionHighLiteColor, defaultHighLite);
    writeProperty(bag, "ForeColor", m_ForeColor, 0u);
    writeProperty(bag, "Picture", pictureBytes(m_Picture), QByteArray());
    writeProperty(bag, "PictureAlignment", int(m_PictureAlignment), 0);
    writeProperty(bag, "Style", int(m_Style), 0);
    writeProperty(bag, "Checked", m_Checked, false);
    writeProperty(bag, "ColorButtonHover", m_ColorButtonHover, defaultHover);
    writeProperty(bag, "ColorButtonUp", m_ColorButtonUp, defaultUp);
    writeProperty(bag, "ColorButtonDown", m_ColorButtonDown, defaultDown);
    writeProperty(bag, "BorderBrightness", int(m_BorderBrightness), 0);
    writeProperty(bag, "ColorBright", m_ColorBright, defaultBright);
    writeProperty(bag, "DisplayHand", m_DisplayHand, false);
    writeProperty(bag, "ColorScheme", m_ColorScheme, 0);
    return bag;
}

void CandyButton::ReadProperties(QSettings &settings)
{
    QVariantMap bag;
    for (const QString &name : propertyNames()) {
        if (settings.contains(name))
            bag.insert(name, settings.value(name));
    }
    ReadProperties(bag);
}

void CandyButton::WriteProperties(QSettings &settings) const
{
    const QVariantMap bag = WriteProperties();
    for (const QString &name : propertyNames()) {
        if (bag.contains(name))
            settings.setValue(name, bag.value(name));
        else
            settings.remove(name);
    }
}

void CandyButton::setDisplayHand(bool value)
{
    m_DisplayHand = value;
    emit PropertyChanged("DisplayHand");
}

void CandyButton::setEnabled(bool value)
{
    m_Enabled = value;
    QWidget::setEnabled(value);
    emit PropertyChanged("Enabled");
    Redraw(StateUp);
}

void CandyButton::setColorScheme(qint32 value)
{
    if (value >= 1 && value <= 6) {
        const Scheme &s = schemes[value - 1];
        setColorButtonUp(s.up);
        setColorButtonHover(s.hover);
        setColorButtonDown(s.down);
        setColorBright(s.bright);
    }
    m_ColorScheme = value;
    emit PropertyChanged("m_ColorScheme");
    Redraw(StateUp);
}

void CandyButton::setBorderBrightness(int value)
{
    m_BorderBrightness = qint16(qBound(-100, value, 100));
    emit PropertyChanged("m_BorderBrightness");
    Redraw(StateUp);
}

void CandyButton::setIconHighLite(bool value)
{
    m_IconHighLite = value;
    emit PropertyChanged("IconHighLite");
}

void CandyButton::setIconHighLiteColor(quint32 value)
{
    m_IconHighLiteColor = value;
    emit PropertyChanged("IconHighLiteColor");
}

void CandyButton::setCaptionHighLite(bool value)
{
    m_CaptionHighLite = value;
    emit PropertyChanged("CaptionHighLite");
}

void CandyButton::setCaptionHighLiteColor(quint32 value)
{
    m_CaptionHighLiteColor = value;
    emit PropertyChanged("CaptionHighLiteColor");
}

// A colour set by hand makes the scheme a custom one.
void CandyButton::setFaceColor(quint32 &field, quint32 value, const QString &mark)
{
    field = value;
    if (m_ColorScheme != 0) {
        m_ColorScheme = 0;
        emit PropertyChanged("m_ColorScheme");
    }
    emit PropertyChanged(mark);
    Redraw(StateUp);
}

void CandyButton::setColorBright(quint32 value)
{
    setFaceColor(m_ColorBright, value, "m_ColorBright");
}

void CandyButton::setColorButtonDown(quint32 value)
{
    setFaceColor(m_ColorButtonDown, value, "m_ColorButtonDown");
}

void CandyButton::setColorButtonUp(quint32 value)
{
    setFaceColor(m_ColorButtonUp, value, "m_ColorButtonUp");
}

void CandyButton::setColorButtonHover(quint32 value)
{
    setFaceColor(m_ColorButtonHover, value, "m_ColorButtonHover");
}

void CandyButton::setForeColor(quint32 value)
{
    m_ForeColor = value;
    emit PropertyChanged("ForeColor");
    Redraw(StateUp);
}

void CandyButton::setPicture(const QImage &value)
{
    m_Picture = value;
    emit PropertyChanged("Picture");
    Redraw(StateUp);
}

void CandyButton::setChecked(bool value)
{
    m_Checked = value;
    if (value)
        Redraw(StateChecked);
    else
        Redraw(m_MouseOver ? StateHover : StateUp);
    emit PropertyChanged("Checked");
}

void CandyButton::setStyle(qint16 value)
{
    if (value == m_Style)
        return;
    m_Style = value;
    emit PropertyChanged("Style");
    BuildShape();
    Redraw(StateUp);
}

void CandyButton::setPictureAlignment(int value)
{
    const quint8 alignment = quint8(qBound(0, value, 3));
    if (alignment == m_PictureAlignment)
        return;
    m_PictureAlignment = alignment;
    emit PropertyChanged("PictureAlignment");
    Redraw(StateUp);
}

void CandyButton::setCaption(const QString &value)
{
    m_Caption = value;
    emit PropertyChanged("Caption");
    Redraw(StateUp);
}

void CandyButton::setFont(const QFont &value)
{
    m_Font = value;
    QWidget::setFont(value);
    emit PropertyChanged("Font");
    Redraw(StateUp);
}

// The toolkit reports the pointer leaving on every platform, so the tracking
// is always there; the paint, move and leave messages drive the hover look.
void CandyButton::trackMouse()
{
    if (m_CanTrackMouse)
        return;
    m_CanTrackMouse = m_subclass.sc_Subclass(this);
    if (!m_CanTrackMouse)
        return;
    m_subclass.sc_WatchMsg(this, candy::WM_PAINT, candy::MSG_BEFORE);
    m_subclass.sc_WatchMsg(this, candy::WM_MOUSEMOVE, candy::MSG_AFTER);
    m_subclass.sc_WatchMsg(this, candy::WM_MOUSELEAVE, candy::MSG_AFTER);
}

void CandyButton::scCallback(bool, bool &, qint32 &, QWidget *, int uMsg, quint32 wParam,
                             qint32 lParam, qint32 &)
{
    switch (uMsg) {
    case candy::WM_PAINT:
        BuildShape();
        break;
    case candy::WM_MOUSEMOVE: {
        const int x = qint16(lParam & 0xFFFF);
        const int y = qint16(quint32(lParam) >> 16);
        if (wParam != candy::MK_LBUTTON && !m_MouseOver && x > 0 && y > 0 && x < width() &&
            y < height()) {
            m_MouseOver = true;
            m_leaveRequested = true; // good for one leave, so asked again at each entry
            emit MouseEnter();
            Redraw(StateHover);
        }
        break;
    }
    case candy::WM_MOUSELEAVE:
        if (!m_leaveRequested)
            break;
        m_leaveRequested = false;
        m_MouseOver = false;
        emit MouseLeave();
        if (!m_Checked)
            Redraw(m_HasFocus ? StateFocus : StateUp);
        break;
    default:
        break;
    }
}

void CandyButton::resizeEvent(QResizeEvent *)
{
    BuildShape();
    Redraw(StateUp);
}

void CandyButton::showEvent(QShowEvent *)
{
    BuildShape();
    Redraw(StateUp);
}

void CandyButton::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    if (m_surface.isNull())
        p.fillRect(rect(), palette().window());
    else
        p.drawImage(0, 0, m_surface);
}

void CandyButton::buttonDown(int button, int shift, int x, int y)
{
    if (!m_Enabled)
        return;
    m_HasFocus = true;
    Redraw(StateDown);
    emit MouseDown(button, shift, x, y);
}

void CandyButton::buttonUp(int button, int shift, int x, int y)
{
    if (!m_Enabled)
        return;
    if (!m_Checked) {
        if (m_MouseOver)
            Redraw(StateHover);
        else if (m_HasFocus)
            Redraw(StateFocus);
    }
    emit MouseUp(button, shift, x, y);
}

void CandyButton::mousePressEvent(QMouseEvent *event)
{
    const QPoint pos = event->position().toPoint();
    buttonDown(legacyButton(event->button()), platform::legacyShift(event->modifiers()), pos.x(),
               pos.y());
}

void CandyButton::mouseReleaseEvent(QMouseEvent *event)
{
    const QPoint pos = event->position().toPoint();
    buttonUp(legacyButton(event->button()), platform::legacyShift(event->modifiers()), pos.x(),
             pos.y());
    if (m_Enabled && event->button() == Qt::LeftButton && rect().contains(pos))
        emit Click();
}

void CandyButton::mouseDoubleClickEvent(QMouseEvent *)
{
    if (!m_Enabled)
        return;
    Redraw(StateDown);
    emit DblClick();
}

void CandyButton::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint pos = event->position().toPoint();
    int buttons = 0;
    for (const Qt::MouseButton b : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        if (event->buttons() & b)
            buttons |= legacyButton(b);
    }
    emit MouseMove(buttons, platform::legacyShift(event->modifiers()), pos.x(), pos.y());
    const bool outside = pos.x() < 0 || pos.y() < 0 || pos.x() > width() || pos.y() > height();
    if (m_Enabled && buttons == 1 && outside) {
        m_MouseOver = false;
        Redraw(StateUp);
    }
}

void CandyButton::keyPressEvent(QKeyEvent *event)
{
    if (!isEnter(*event))
        return QWidget::keyPressEvent(event);
    buttonDown(1, platform::legacyShift(event->modifiers()), 0, 0);
}

void CandyButton::keyReleaseEvent(QKeyEvent *event)
{
    if (!isEnter(*event) || event->isAutoRepeat())
        return QWidget::keyReleaseEvent(event);
    buttonUp(1, platform::legacyShift(event->modifiers()), 0, 0);
    if (m_Enabled)
        emit Click();
}

void CandyButton::focusInEvent(QFocusEvent *)
{
    m_HasFocus = true;
    if (m_Enabled && !m_Checked && !m_MouseOver)
        Redraw(StateFocus);
}

void CandyButton::focusOutEvent(QFocusEvent *)
{
    m_HasFocus = false;
    if (m_Enabled && !m_Checked)
        Redraw(StateUp);
}
