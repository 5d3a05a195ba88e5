#include "print/PageDocument.h"
#include <QFontMetricsF>
#include <QPageSize>
#include <algorithm>
#include <cmath>

namespace print {

namespace {

constexpr qreal kTabStop = 360;
constexpr qreal kCellPad = 60;
const QSizeF kLetter(12240, 15840);

QStringList splitLines(const QString &text)
{
    QString t = text;
    t.replace("\r\n", "\n");
    t.replace('\r', '\n');
    return t.split('\n');
}

// Greedy word wrap; a word longer than the width is cut where it must be.
QStringList wrap(const QString &line, const QFontMetricsF &fm, qreal width)
{
    if (fm.horizontalAdvance(line) <= width)
        return {line};
    QStringList out;
    QString current;
    auto fits = [&](const QString &s) { return fm.horizontalAdvance(s) <= width; };
    for (QString word : line.split(' ')) {
        const QString joined = current.isEmpty() ? word : current + ' ' + word;
        if (fits(joined)) {
            current = joined;
            continue;
        }
        if (!current.isEmpty())
            out << current;
        while (word.size() > 1 && !fits(word)) {
            int n = word.size() - 1;
            while (n > 1 && !fits(word.left(n))) --n;
            out << word.left(n);
            word = word.mid(n);
        }
        current = word;
    }
    out << current;
    return out;
}

struct Placed {
    QString text;
    qreal dx = 0;
    int line = 0;
};

// A cell's text in lines of its width: a tab moves to the next stop, and text
// that would run past the cell wraps below, starting where it began.
std::vector<Placed> layoutCell(const QString &cell, const QFontMetricsF &fm, qreal width, int align)
{
    std::vector<Placed> out;
    int line = 0;
    for (const QString &source : splitLines(cell)) {
        const QStringList segments = source.split('\t');
        qreal cx = 0;
        for (int t = 0; t < segments.size(); ++t) {
            if (t > 0)
                cx = (std::floor(cx / kTabStop) + 1) * kTabStop;
            if (cx >= width) {
                ++line;
                cx = 0;
            }
            const QStringList parts = wrap(segments[t], fm, width - cx);
            for (int i = 0; i < parts.size(); ++i) {
                const qreal w = fm.horizontalAdvance(parts[i]);
                qreal dx = cx;
                if (segments.size() == 1 && align == taCenter)
                    dx = (width - w) / 2;
                else if (segments.size() == 1 && align == taRight)
                    dx = width - w;
                if (!parts[i].isEmpty())
                    out.push_back({parts[i], dx, line});
                if (i + 1 < parts.size())
                    ++line;
                else
                    cx += w;
            }
        }
        ++line;
    }
    return out;
}

} // namespace

QColor vbColor(long value)
{
    return QColor(int(value & 0xFF), int((value >> 8) & 0xFF), int((value >> 16) & 0xFF));
}

PageDocument::PageDocument(QObject *parent) : QObject(parent) {}

qreal PageDocument::PageWidth() const
{
    return m_orientation == orLandscape ? kLetter.height() : kLetter.width();
}

qreal PageDocument::PageHeight() const
{
    return m_orientation == orLandscape ? kLetter.width() : kLetter.height();
}

int PageDocument::fontIndex(qreal points, bool bold)
{
    for (size_t i = 0; i < m_fonts.size(); ++i) {
        const QFont &f = m_fonts[i];
        if (f.family() == m_fontName && f.pixelSize() == qRound(points * 20) && f.bold() == bold)
            return int(i);
    }
    QFont f(m_fontName);
    f.setPixelSize(qRound(points * 20));
    f.setBold(bold);
    f.setHintingPreference(QFont::PreferNoHinting);
    f.setKerning(false);
    m_fonts.push_back(f);
    return int(m_fonts.size() - 1);
}

void PageDocument::StartDoc()
{
    m_pages.clear();
    m_findRect = QRectF();
    m_previewPage = 0;
    m_open = true;
    startPage();
}

void PageDocument::NewPage()
{
    if (!m_open)
        return;
    startPage();
}

void PageDocument::EndDoc()
{
    if (!m_open)
        return;
    m_open = false;
    emit endDoc();
}

void PageDocument::KillDoc()
{
    m_open = false;
    m_pages.clear();
    m_previewPage = 0;
}

void PageDocument::KeepTogether(const std::function<void()> &write)
{
    if (!m_open || m_pages.empty()) {
        write();
        return;
    }
    const size_t pages = m_pages.size();
    const Page before = m_pages.back();
    const qreal x = m_x, y = m_y, lineHeight = m_lineHeight;
    const qreal size = m_fontSize;
    const bool bold = m_bold;
    const long color = m_textColor;
    const int align = m_align;
    write();
    if (m_pages.size() == pages || y <= m_marginTop)
        return;
    m_pages.resize(pages);
    m_pages.back() = before;
    m_x = x;
    m_y = y;
    m_lineHeight = lineHeight;
    m_fontSize = size;
    m_bold = bold;
    m_textColor = color;
    m_align = align;
    startPage();
    write();
}

void PageDocument::startPage()
{
    Page page;
    page.size = QSizeF(PageWidth(), PageHeight());
    m_pages.push_back(std::move(page));
    placeHeaderFooter(m_pages.back(), PageCount());
    m_x = contentLeft();
    m_y = m_marginTop;
    m_lineHeight = 0;
    if (PageCount() == 1)
        m_previewPage = 1;
    emit newPage();
}

void PageDocument::placeHeaderFooter(Page &page, int number)
{
    int font = fontIndex(m_hdrFontSize, false);
    QFontMetricsF fm(m_fonts[size_t(font)]);
    auto place = [&](const QString &text, qreal top) {
        const QStringList parts = text.split('|');
        for (int i = 0; i < parts.size() && i < 3; ++i) {
            QString s = parts[i];
            s.replace("%d", QString::number(number));
            if (s.isEmpty())
                continue;
            qreal w = fm.horizontalAdvance(s);
            qreal x = i == 0   ? contentLeft()
                      : i == 1 ? (contentLeft() + contentRight() - w) / 2
                               : contentRight() - w;
            page.texts.push_back({QRectF(x, top, w, fm.height()), s, font, 0, fm.ascent()});
        }
    };
    if (!m_header.isEmpty())
        place(m_header, m_marginTop / 2 - fm.height() / 2);
    if (!m_footer.isEmpty())
        place(m_footer, PageHeight() - m_marginBottom / 2 - fm.height() / 2);
}

void PageDocument::pageBreakFor(qreal height)
{
    if (m_y + height > contentBottom() && m_y > m_marginTop)
        startPage();
}

void PageDocument::endLine()
{
    if (m_x > contentLeft() || m_lineHeight > 0) {
        m_y += m_lineHeight;
    }
    m_x = contentLeft();
    m_lineHeight = 0;
}

void PageDocument::writeRun(const QString &text, int font, QRgb color, qreal x, qreal top,
                            qreal ascent, qreal height)
{
    if (text.isEmpty())
        return;
    qreal w = QFontMetricsF(m_fonts[size_t(font)]).horizontalAdvance(text);
    m_pages.back().texts.push_back({QRectF(x, top, w, height), text, font, color, ascent});
}

void PageDocument::setText(const QString &text)
{
    if (!m_open)
        return;
    int font = fontIndex(m_fontSize, m_bold);
    QFontMetricsF fm(m_fonts[size_t(font)]);
    QRgb color = vbColor(m_textColor).rgb();
    const QStringList lines = splitLines(text);
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            if (m_lineHeight == 0)
                m_lineHeight = fm.height();
            endLine();
        }
        const QStringList parts = wrap(lines[i], fm, contentRight() - m_x);
        for (int j = 0; j < parts.size(); ++j) {
            if (j > 0)
                endLine();
            if (parts[j].isEmpty())
                continue;
            pageBreakFor(fm.height());
            qreal w = fm.horizontalAdvance(parts[j]);
            qreal x = m_x;
            if (m_align == taCenter)
                x = (contentLeft() + contentRight() - w) / 2;
            else if (m_align == taRight)
                x = contentRight() - w;
            writeRun(parts[j], font, color, x, m_y, fm.ascent(), fm.height());
            m_x = x + w;
            m_lineHeight = std::max(m_lineHeight, fm.height());
        }
    }
}

void PageDocument::Paragraph(const QString &text)
{
    setText(text + '\n');
}

void PageDocument::setTableSeparators(const QString &columnThenRow)
{
    if (columnThenRow.size() >= 2) {
        m_colSep = columnThenRow.left(1);
        m_rowSep = columnThenRow.mid(1, 1);
    }
}

void PageDocument::AddTable(const QString &format, const QString &body)
{
    if (!m_open)
        return;
    endLine();
    QString f = format;
    while (f.endsWith(m_rowSep) || f.endsWith(';') || f.endsWith('\n')) f.chop(1);
    std::vector<std::pair<int, qreal>> columns;
    for (const QString &entry : f.split(m_colSep)) {
        QString e = entry.trimmed();
        int align = taLeft;
        if (e.startsWith('^'))
            align = taCenter;
        else if (e.startsWith('>'))
            align = taRight;
        if (e.startsWith('<') || e.startsWith('^') || e.startsWith('>'))
            e = e.mid(1);
        columns.push_back({align, e.toDouble()});
    }
    QStringList rows = body.split(m_rowSep);
    if (rows.size() > 1 && rows.back().isEmpty())
        rows.removeLast();
    int font = fontIndex(m_fontSize, m_bold);
    QRgb color = vbColor(m_textColor).rgb();
    for (int r = 0; r < rows.size(); ++r)
        m_y += tableRow(rows[r].split(m_colSep), columns, font, color, r == 0);
    m_x = contentLeft();
    m_lineHeight = 0;
}

qreal PageDocument::tableRow(const QStringList &cells,
                             const std::vector<std::pair<int, qreal>> &columns, int font,
                             QRgb color, bool firstRow)
{
    QFontMetricsF fm(m_fonts[size_t(font)]);
    std::vector<std::vector<Placed>> placed;
    int most = 1;
    for (size_t c = 0; c < columns.size(); ++c) {
        const QString cell = int(c) < cells.size() ? cells[int(c)] : QString();
        placed.push_back(layoutCell(cell, fm, columns[c].second - 2 * kCellPad, columns[c].first));
        for (const Placed &p : placed.back()) most = std::max(most, p.line + 1);
    }
    const qreal height = most * fm.height() + 2 * kCellPad;
    pageBreakFor(height);
    Page &page = m_pages.back();
    qreal x = contentLeft();
    for (size_t c = 0; c < columns.size(); ++c) {
        for (const Placed &p : placed[c])
            writeRun(p.text, font, color, x + kCellPad + p.dx,
                     m_y + kCellPad + p.line * fm.height(), fm.ascent(), fm.height());
        x += columns[c].second;
    }
    if (m_border != tbNone) {
        const qreal left = contentLeft();
        const qreal right = x;
        const qreal bottom = m_y + height;
        auto rule = [&](qreal x1, qreal y1, qreal x2, qreal y2) {
            page.rules.push_back({QLineF(x1, y1, x2, y2), 15, 0});
        };
        bool all = m_border == tbAll;
        if (firstRow || all)
            rule(left, m_y, right, m_y);
        rule(left, bottom, right, bottom);
        rule(left, m_y, left, bottom);
        rule(right, m_y, right, bottom);
        if (all) {
            qreal cx = left;
            for (size_t c = 0; c + 1 < columns.size(); ++c) {
                cx += columns[c].second;
                rule(cx, m_y, cx, bottom);
            }
        }
    }
    return height;
}

void PageDocument::DrawPicture(const QImage &image, qreal widthTwips, qreal heightTwips)
{
    if (!m_open)
        return;
    endLine();
    pageBreakFor(heightTwips);
    qreal x = contentLeft();
    if (m_align == taCenter)
        x = (contentLeft() + contentRight() - widthTwips) / 2;
    else if (m_align == taRight)
        x = contentRight() - widthTwips;
    m_pages.back().pictures.push_back({QRectF(x, m_y, widthTwips, heightTwips), image});
    m_y += heightTwips;
}

void PageDocument::setPreviewPage(int number)
{
    number = std::clamp(number, PageCount() ? 1 : 0, PageCount());
    if (number == m_previewPage)
        return;
    m_previewPage = number;
    emit previewPageChanged();
}

void PageDocument::setZoom(double percent)
{
    if (qFuzzyCompare(percent, m_zoom))
        return;
    m_zoom = percent;
    emit zoomChanged();
}

int PageDocument::FindText(const QString &text, int fromPage, qreal fromPos)
{
    m_findRect = QRectF();
    if (text.isEmpty())
        return 0;
    for (int p = std::max(fromPage, 1); p <= PageCount(); ++p) {
        const Page &page = m_pages[size_t(p - 1)];
        const TextRun *best = nullptr;
        int bestAt = -1;
        for (const TextRun &run : page.texts) {
            if (p == fromPage && run.rect.top() < fromPos)
                continue;
            int at = run.text.indexOf(text, 0, Qt::CaseInsensitive);
            if (at < 0)
                continue;
            if (!best || run.rect.top() < best->rect.top() ||
                (run.rect.top() == best->rect.top() && run.rect.left() < best->rect.left())) {
                best = &run;
                bestAt = at;
            }
        }
        if (best) {
            QFontMetricsF fm(m_fonts[size_t(best->font)]);
            qreal x = best->rect.left() + fm.horizontalAdvance(best->text.left(bestAt));
            m_findRect =
                QRectF(x, best->rect.top(), fm.horizontalAdvance(text), best->rect.height());
            return p;
        }
    }
    return 0;
}

void PageDocument::addOverlay(int page, const QRectF &rect, qreal penWidth, long penColor,
                              long brushColor, int brushStyle)
{
    if (page < 1 || page > PageCount())
        return;
    m_pages[size_t(page - 1)].overlays.push_back(
        {rect, penWidth, vbColor(penColor).rgb(), vbColor(brushColor).rgb(), brushStyle});
}

void PageDocument::clearOverlays()
{
    for (Page &p : m_pages) p.overlays.clear();
}

} // namespace print
