#pragma once
#include <QColor>
#include <QFont>
#include <QImage>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace print {

// Every length of the document is in twips (1440 to the inch) and every
// colour a legacy colour value: 0xBBGGRR, so 255 is red and 0xFF0000 blue.
QColor vbColor(long value);

enum TextAlign { taLeft = 0, taRight = 1, taCenter = 2 };
enum Orientation { orPortrait = 0, orLandscape = 1 };
enum TableBorder { tbNone = 0, tbBox = 4, tbAll = 7 };

struct TextRun {
    QRectF rect; // the run's box: top is the line's top, height the line's height
    QString text;
    int font = 0; // index into PageDocument::fonts()
    QRgb color = 0;
    qreal ascent = 0;
};

struct Rule {
    QLineF line;
    qreal width = 15;
    QRgb color = 0;
};

struct Picture {
    QRectF rect;
    QImage image;
};

struct Overlay {
    QRectF rect;
    qreal penWidth = 15;
    QRgb pen = 0;
    QRgb brush = 0;
    int brushStyle = 1; // 0 solid, 1 transparent
};

struct Page {
    QSizeF size;
    std::vector<TextRun> texts;
    std::vector<Rule> rules;
    std::vector<Picture> pictures;
    std::vector<Overlay> overlays;
};

// The page document that a report writes into and the preview, the printer and
// the PDF draw from. Text and tables flow down the page; when the next line,
// table row or picture does not fit, a new page starts, so a row is never cut.
class PageDocument : public QObject {
    Q_OBJECT
public:
    explicit PageDocument(QObject *parent = nullptr);

    // The reports switch the preview on before they start; pages always collect
    // here, and the preview screen shows them when the document ends.
    bool Preview() const { return m_preview; }
    void setPreview(bool on) { m_preview = on; }

    // Actions 3, 4, 6 and 7 of the legacy control.
    void StartDoc();
    void NewPage();
    void EndDoc();
    void KillDoc();
    bool IsOpen() const { return m_open; }

    // Writes text at the current position; a line feed (or CR LF) ends the
    // line, and long text wraps at blanks within the margins.
    void setText(const QString &text);
    // The text followed by the end of its line.
    void Paragraph(const QString &text);

    qreal fontSize() const { return m_fontSize; }
    void setFontSize(qreal points) { m_fontSize = points; }
    bool FontBold() const { return m_bold; }
    void setFontBold(bool bold) { m_bold = bold; }
    QString FontName() const { return m_fontName; }
    void setFontName(const QString &family) { m_fontName = family; }
    long TextColor() const { return m_textColor; }
    void setTextColor(long color) { m_textColor = color; }
    int TextAlign() const { return m_align; }
    void setTextAlign(int align) { m_align = align; }

    // Tables: the format "<2200|^1100|>900;" gives per column an alignment
    // ("<" left, "^" centre, ">" right) and a width; the body's rows and cells
    // are split by the two table separators. A tab in a cell moves to the next
    // quarter-inch stop. Rows use the current font and colour.
    QString TableSeparators() const { return m_colSep + m_rowSep; }
    void setTableSeparators(const QString &columnThenRow);
    int TableBorder() const { return m_border; }
    void setTableBorder(int border) { m_border = border; }
    void AddTable(const QString &format, const QString &body);

    // What `write` writes stays on one page: when it would run onto the next,
    // it is written again from the top of a new page (unless it started there).
    void KeepTogether(const std::function<void()> &write);

    // A picture drawn at the given size in the flow, aligned as TextAlign says.
    void DrawPicture(const QImage &image, qreal widthTwips, qreal heightTwips);

    // Three parts split by "|" (left, centre, right); "%d" becomes the page number.
    QString Header() const { return m_header; }
    void setHeader(const QString &text) { m_header = text; }
    QString Footer() const { return m_footer; }
    void setFooter(const QString &text) { m_footer = text; }
    qreal HdrFontSize() const { return m_hdrFontSize; }
    void setHdrFontSize(qreal points) { m_hdrFontSize = points; }

    // Takes effect from the next page on.
    int Orientation() const { return m_orientation; }
    void setOrientation(int orientation) { m_orientation = orientation; }
    qreal PageWidth() const;
    qreal PageHeight() const;
    qreal MarginLeft() const { return m_marginLeft; }
    void setMarginLeft(qreal twips) { m_marginLeft = twips; }
    qreal MarginRight() const { return m_marginRight; }
    void setMarginRight(qreal twips) { m_marginRight = twips; }
    qreal MarginTop() const { return m_marginTop; }
    void setMarginTop(qreal twips) { m_marginTop = twips; }
    qreal MarginBottom() const { return m_marginBottom; }
    void setMarginBottom(qreal twips) { m_marginBottom = twips; }
    qreal CurrentY() const { return m_y; }

    int PageCount() const { return int(m_pages.size()); }
    const Page &page(int number) const { return m_pages.at(size_t(number - 1)); }
    const std::vector<QFont> &fonts() const { return m_fonts; }

    // The page on the screen, 1-based; 0 while there is none.
    int PreviewPage() const { return m_previewPage; }
    void setPreviewPage(int number);
    // Percent.
    double Zoom() const { return m_zoom; }
    void setZoom(double percent);

    // Searches from a page and a vertical position on it (both 0 for the
    // start); the result is the page of the hit, 0 when there is none, and
    // FindRect() the hit's box.
    int FindText(const QString &text, int fromPage, qreal fromPos);
    QRectF FindRect() const { return m_findRect; }

    // Marks a page; the mark is drawn above the page on the screen only.
    void addOverlay(int page, const QRectF &rect, qreal penWidth, long penColor, long brushColor,
                    int brushStyle);
    void clearOverlays();

signals:
    void newPage();
    void endDoc();
    void zoomChanged();
    void previewPageChanged();

private:
    int fontIndex(qreal points, bool bold);
    void startPage();
    void pageBreakFor(qreal height);
    void endLine();
    void placeHeaderFooter(Page &page, int number);
    qreal contentLeft() const { return m_marginLeft; }
    qreal contentRight() const { return PageWidth() - m_marginRight; }
    qreal contentBottom() const { return PageHeight() - m_marginBottom; }
    void writeRun(const QString &text, int font, QRgb color, qreal x, qreal top, qreal ascent,
                  qreal height);
    qreal tableRow(const QStringList &cells, const std::vector<std::pair<int, qreal>> &columns,
                   int font, QRgb color, bool firstRow);

    bool m_preview = false;
    bool m_open = false;
    std::vector<Page> m_pages;
    std::vector<QFont> m_fonts;

    QString m_fontName = "Arial";
    qreal m_fontSize = 10;
    bool m_bold = false;
    long m_textColor = 0;
    int m_align = taLeft;
    QString m_colSep = "|";
    QString m_rowSep = ";";
    int m_border = tbAll;
    QString m_header;
    QString m_footer;
    qreal m_hdrFontSize = 9;
    int m_orientation = orPortrait;
    qreal m_marginLeft = 1440;
    qreal m_marginRight = 1440;
    qreal m_marginTop = 1440;
    qreal m_marginBottom = 1440;

    // The flow: the current line's position and what it holds so far.
    qreal m_x = 0;
    qreal m_y = 0;
    qreal m_lineHeight = 0;

    int m_previewPage = 0;
    double m_zoom = 100;
    QRectF m_findRect;
};

} // namespace print
