// Painting of CandyButton: the shape, the face of a state, the caption and the picture.
#include "candybutton/CandyButton.h"
#include "candybutton/CandyColor.h"
#include "common/Conversions.h"
#include <QPainter>
#include <cmath>
#include <cstdlib>

namespace {

constexpr quint32 white = 0xFFFFFF;
constexpr quint32 disabledFace = 0xB0C0C0;
constexpr quint32 disabledShadow = 0x808080;

// Whole numbers of the legacy runtime round half to even.
int clng(double v)
{
    return int(std::lrint(v));
}

// The 12 numbers that steer one face.
struct ShapeParams {
    int GlossStart, GlossRange, GlossLeft, GlossTop, GlossRadius, GlossBottom, GlossRight;
    int GlowWidth, GlowHeight, GlowCentreX, GlowCentreY, GlowRange;
};

ShapeParams shapeParams(int W, int H, int R)
{
    const int r = clng(R / 2.0);
    return {
        0,  50, clng(r / 2.0), 2, clng(r / 2.0), R + 1, W - R, 60, 60, clng(W / 2.0), clng(H / 2.0),
        100};
}

// The point test of a rounded rectangle (left, top) - (right, bottom), exclusive
// at the right and bottom, with corner circles of radius e.
bool inRoundRect(int x, int y, int left, int top, int right, int bottom, int e)
{
    if (x < left || y < top || x >= right || y >= bottom)
        return false;
    const double cx = x < left + e ? left + e : x >= right - e ? right - e : x + 0.5;
    const double cy = y < top + e ? top + e : y >= bottom - e ? bottom - e : y + 0.5;
    const double dx = x + 0.5 - cx, dy = y + 0.5 - cy;
    return dx * dx + dy * dy <= double(e) * e;
}

// A point of the left half outside the rounded shape: in a corner square, and
// not nearer the corner circle's centre than the circle's edge in its row.
bool cornerOutside(int x, int y, int H, int R)
{
    if (x >= R || (y >= R && y < H - R))
        return false;
    const int dx = R - x;
    const int dy = y < R ? R - y : y - (H - 1 - R);
    const int under = R * R - dy * dy;
    return under < 0 || dx >= clng(std::sqrt(double(under)));
}

QImage oneColour(const QImage &picture, QRgb colour)
{
    QImage shape = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter p(&shape);
    p.setCompositionMode(QPainter::CompositionMode_SourceIn);
    p.fillRect(shape.rect(), QColor(colour));
    return shape;
}

QSize textSize(const QFontMetrics &fm, const QString &text)
{
    if (text.isEmpty())
        return {0, 0};
    const QStringList lines = text.split('\r');
    int width = 0;
    for (const QString &line : lines) width = std::max(width, fm.horizontalAdvance(line));
    return {width, int(lines.size()) * fm.height()};
}

} // namespace

void CandyButton::GetRGB(int &r, int &g, int &b, quint32 Color)
{
    const QRgb rgb = candy::translateColor(Color);
    r = qRed(rgb);
    g = qGreen(rgb);
    b = qBlue(rgb);
}

quint32 CandyButton::BlendColors(quint32 Color1, quint32 Color2, int Percentage)
{
    const int pct = qBound(0, Percentage, 100);
    int r1, g1, b1, r2, g2, b2;
    GetRGB(r1, g1, b1, Color1);
    GetRGB(r2, g2, b2, Color2);
    return candy::colorValue(r1 + (r2 - r1) * pct / 100, g1 + (g2 - g1) * pct / 100,
                             b1 + (b2 - b1) * pct / 100);
}

QRegion CandyButton::roundedRegion(int W, int H, int R)
{
    QRegion region(0, 0, W, H);
    int bandTop = 0, bandCut = 0;
    const auto cutBand = [&](int bottom) {
        if (bandCut > 0) {
            const int right = std::max(W - bandCut, bandCut);
            region ^= QRegion(0, bandTop, bandCut, bottom - bandTop);
            region ^= QRegion(right, bandTop, W - right, bottom - bandTop);
        }
    };
    for (int y = 0; y < H; ++y) {
        int cut = 0;
        while (cut <= W / 2 && cornerOutside(cut, y, H, R)) ++cut;
        if (cut != bandCut) {
            cutBand(y);
            bandTop = y;
            bandCut = cut;
        }
    }
    cutBand(H);
    return region;
}

void CandyButton::BuildShape()
{
    const int W = width(), H = height();
    m_CornerRadius = std::max(std::min(std::max(H / 4 + 1, 1), W / 4), 1);
    const QRegion region = roundedRegion(W, H, m_CornerRadius);
    if (region != mask())
        setMask(region);
    m_ShapeRegion = region;
}

void CandyButton::Redraw(int state)
{
    if (m_Checked)
        state = StateChecked;
    if (!m_Ready)
        return;
    // A control never shown has had no resize to build its shape from.
    if (m_ShapeRegion.boundingRect().size() != size())
        BuildShape();
    if (m_surface.size() != size())
        m_surface = QImage(size(), QImage::Format_RGB32);
    m_surface.fill(palette().window().color());
    if (!m_surface.isNull()) {
        PaintFace(state);
        DrawIconWCaption(state);
    }
    update();
}

void CandyButton::PaintFace(int state)
{
    if (m_CornerRadius < 1)
        m_CornerRadius = 1;
    quint32 face = state == StateDown || state == StateChecked ? m_ColorButtonDown
                   : state == StateHover                       ? m_ColorButtonHover
                                                               : m_ColorButtonUp;
    quint32 bright = m_ColorBright;
    if (!m_Enabled) {
        face = disabledFace;
        bright = white;
    }
    const quint32 corner = m_BorderBrightness >= 0 ? BlendColors(face, white, m_BorderBrightness)
                                                   : BlendColors(face, 0, -m_BorderBrightness);
    m_surface.fill(candy::translateColor(face));
    PaintGlow(face, bright);
    PaintGloss(face, corner);
}

// The glow, from the face colour at its rim to the bright colour at its centre.
void CandyButton::PaintGlow(quint32 face, quint32 bright)
{
    const int W = width(), H = height();
    const ShapeParams sp = shapeParams(W, H, m_CornerRadius);
    const int RX = clng(W * sp.GlowWidth / 100.0), RY = clng(H * sp.GlowHeight / 100.0);
    double stepX = 1, stepY = 1;
    if (RX > RY && RY > 0)
        stepX = double(RX) / RY;
    else if (RY > RX && RX > 0)
        stepY = double(RY) / RX;
    double left = sp.GlowCentreX - RX, right = sp.GlowCentreX + RX;
    double top = sp.GlowCentreY - RY, bottom = sp.GlowCentreY + RY;
    QPainter p(&m_surface);
    p.setPen(Qt::NoPen);
    quint32 brush = face;
    for (int count = 2; right > left && bottom > top; ++count) {
        p.setBrush(QColor(candy::translateColor(brush)));
        p.drawEllipse(
            QRect(QPoint(clng(left), clng(top)), QPoint(clng(right) - 1, clng(bottom) - 1)));
        left += stepX;
        right -= stepX;
        top += stepY;
        bottom -= stepY;
        brush = BlendColors(face, bright, clng(sp.GlowRange * count / double(std::max(RY, 1))));
    }
}

// The gloss on the upper edge, and the corners outside the shape.
void CandyButton::PaintGloss(quint32 face, quint32 corner)
{
    const int W = width(), H = height(), R = m_CornerRadius;
    const ShapeParams sp = shapeParams(W, H, R);
    const int step = sp.GlossRange / R;
    const QRgb cornerRgb = candy::translateColor(corner);
    const auto setPixel = [this](int x, int y, QRgb c) {
        if (m_surface.valid(x, y))
            m_surface.setPixel(x, y, c);
    };
    for (int y = 0; y <= H; ++y) {
        for (int x = 0; x <= W / 2 && y <= H; ++x) {
            if (!m_ShapeRegion.contains(QPoint(x, y))) {
                setPixel(x, y, cornerRgb);
                setPixel(W - x, y, cornerRgb);
            } else if (inRoundRect(x, y, sp.GlossLeft, sp.GlossTop, sp.GlossRight, sp.GlossBottom,
                                   sp.GlossRadius)) {
                const QRgb gloss =
                    candy::translateColor(BlendColors(white, face, sp.GlossStart + step * y));
                if (y < H) {
                    QRgb *line = reinterpret_cast<QRgb *>(m_surface.scanLine(y));
                    std::fill(line + x, line + std::min(W - x + 1, W), gloss);
                }
                // The next row goes on from its second pixel.
                ++y;
                x = 0;
            }
        }
    }
}

void CandyButton::DrawIconWCaption(int state)
{
    const int W = width(), H = height(), R = m_CornerRadius;
    const int PW = m_Picture.isNull() ? 0 : m_Picture.width();
    const int PH = m_Picture.isNull() ? 0 : m_Picture.height();
    const QSize text = textSize(QFontMetrics(m_Font), m_Caption);
    const int TW = text.width(), TH = text.height();
    double px = 0, py = 0;
    const double cx = std::abs(W / 2.0 - TW / 2.0);
    double cy = std::abs(H / 2.0 - TH / 2.0);
    switch (m_PictureAlignment) {
    case 0:
        px = (W - PW) / 2.0 + 1;
        py = (H - (PH + TH)) / 2.0 + 1;
        cy = std::abs(H / 2.0 + PH / 2.0 - TH / 2.0);
        break;
    case 1:
        px = (W - PW) / 2.0;
        py = (H - (PH - TH)) / 2.0 + 1;
        cy = std::abs(H / 2.0 - (PH + TH) / 2.0);
        break;
    case 2:
        px = R == 0 ? 8 : R;
        py = (H - PH) / 2.0 + 1;
        break;
    default:
        px = R == 0 ? W - 8 - PW : W - R - PW;
        py = (H - PH) / 2.0 + 1;
        break;
    }
    // Only the pressed state moves the face's content.
    const int offset = state == StateDown ? 1 : 0;
    DrawCaption(state, QRect(clng(cx) + offset, clng(cy) + offset, TW, TH), PW > 0);
    if (!m_Picture.isNull())
        DrawPicture(state, QPoint(clng(px) + offset, clng(py) + offset));
}

void CandyButton::DrawCaption(int state, const QRect &at, bool hasPicture)
{
    QPainter p(&m_surface);
    p.setFont(m_Font);
    const QRgb colour = candy::translateColor(
        state == StateHover && m_CaptionHighLite ? m_CaptionHighLiteColor : m_ForeColor);
    const auto draw = [&](const QString &text, QPoint pos) {
        const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic;
        const QRect box(pos, QSize(width() + std::abs(pos.x()), height() + std::abs(pos.y())));
        if (!m_Enabled) {
            p.setPen(QColor(candy::translateColor(white)));
            p.drawText(box.translated(1, 1), flags, text);
            p.setPen(QColor(candy::translateColor(disabledShadow)));
        } else {
            p.setPen(QColor(colour));
        }
        p.drawText(box, flags, text);
    };
    const qsizetype cr = m_Caption.indexOf('\r');
    if (cr < 0) {
        draw(m_Caption, at.topLeft());
        return;
    }
    draw(m_Caption.left(cr), QPoint(at.x(), clng(at.y() * 0.8)));
    QString rest = m_Caption.mid(cr + 1);
    if (!conv::AboveBlank(rest))
        return;
    rest.replace('\r', ' ');
    const int restWidth = QFontMetrics(m_Font).horizontalAdvance(rest);
    draw(rest, QPoint(clng(at.x() - (restWidth - at.width()) / 2.0),
                      clng(at.y() * (hasPicture ? 1.3 : 2.5))));
}

void CandyButton::DrawPicture(int state, QPoint at)
{
    QPainter p(&m_surface);
    if (!m_Enabled) {
        p.drawImage(at + QPoint(1, 1), oneColour(m_Picture, candy::translateColor(white)));
        p.drawImage(at, oneColour(m_Picture, candy::translateColor(disabledShadow)));
    } else if (state == StateHover && m_IconHighLite) {
        p.drawImage(at, oneColour(m_Picture, candy::translateColor(m_IconHighLiteColor)));
    } else {
        p.drawImage(at, m_Picture);
    }
}
