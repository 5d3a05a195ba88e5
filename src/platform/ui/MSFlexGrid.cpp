#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Twips.h"
#include <QEvent>
#include <QHeaderView>
#include <algorithm>

namespace platform {

MSFlexGrid::MSFlexGrid(QWidget *parent) : QTableWidget(parent)
{
    verticalHeader()->hide();
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void MSFlexGrid::setRows(int rows)
{
    setRowCount(std::max(0, rows - FixedRows()));
}

void MSFlexGrid::setCols(int cols)
{
    setColumnCount(cols);
    m_colTwips.resize(cols);
    for (int c = 0; c < cols; ++c) {
        if (m_colTwips[c] == 0)
            m_colTwips[c] = pixelsToTwips(columnWidth(c));
    }
}

// Only a heading row can be fixed: it is the grid's header.
void MSFlexGrid::setFixedRows(int rows)
{
    const int total = Rows();
    m_fixedRows = std::clamp(rows, 0, 1);
    horizontalHeader()->setVisible(m_fixedRows == 1);
    setRows(total);
}

void MSFlexGrid::setFixedCols(int cols)
{
    m_fixedCols = std::max(0, cols);
}

QString MSFlexGrid::TextMatrix(int row, int col) const
{
    const QTableWidgetItem *it =
        row < FixedRows() ? horizontalHeaderItem(col) : item(row - FixedRows(), col);
    return it ? it->text() : QString();
}

QTableWidgetItem *MSFlexGrid::cell(int row, int col)
{
    if (row < FixedRows()) {
        if (!horizontalHeaderItem(col))
            setHorizontalHeaderItem(col, new QTableWidgetItem);
        return horizontalHeaderItem(col);
    }
    QTableWidgetItem *it = item(row - FixedRows(), col);
    if (!it) {
        it = new QTableWidgetItem;
        if (col < FixedCols())
            it->setBackground(palette().button());
        setItem(row - FixedRows(), col, it);
    }
    return it;
}

void MSFlexGrid::setTextMatrix(int row, int col, const QString &text)
{
    if (row < 0 || row >= Rows() || col < 0 || col >= Cols())
        return;
    QTableWidgetItem *it = cell(row, col);
    it->setText(text);
    if (row >= FixedRows() && col < m_alignments.size() && m_alignments[col])
        it->setTextAlignment(m_alignments[col]);
}

void MSFlexGrid::AddItem(const QString &text)
{
    const int row = Rows();
    setRows(row + 1);
    const QStringList parts = text.split('\t');
    for (int c = 0; c < Cols() && c < parts.size(); ++c) setTextMatrix(row, c, parts[c]);
}

void MSFlexGrid::RemoveItem(int row)
{
    if (row >= FixedRows() && row < Rows())
        removeRow(row - FixedRows());
}

void MSFlexGrid::Clear()
{
    clearContents();
    for (int c = 0; c < Cols(); ++c) {
        if (horizontalHeaderItem(c))
            horizontalHeaderItem(c)->setText(QString());
    }
}

void MSFlexGrid::setColAlignment(int col, Qt::Alignment alignment)
{
    if (col >= m_alignments.size())
        m_alignments.resize(col + 1);
    m_alignments[col] = alignment | Qt::AlignVCenter;
    if (FixedRows() > 0)
        cell(0, col)->setTextAlignment(m_alignments[col]);
}

bool MSFlexGrid::GenericLess(const QString &a, const QString &b)
{
    bool aNumber = false, bNumber = false;
    const double x = a.trimmed().toDouble(&aNumber), y = b.trimmed().toDouble(&bNumber);
    if (aNumber && bNumber)
        return x < y;
    return QString::compare(a, b, Qt::CaseInsensitive) < 0;
}

void MSFlexGrid::AddItems(const QList<QStringList> &rows)
{
    const int first = Rows();
    setRows(first + static_cast<int>(rows.size()));
    for (int i = 0; i < rows.size(); ++i) {
        for (int c = 0; c < Cols() && c < rows[i].size(); ++c)
            setTextMatrix(first + i, c, rows[i][c]);
    }
}

void MSFlexGrid::SortGenericAscending()
{
    const int key = Col();
    QVector<QStringList> rows;
    for (int r = FixedRows(); r < Rows(); ++r) {
        QStringList cells;
        for (int c = 0; c < Cols(); ++c) cells << TextMatrix(r, c);
        rows << cells;
    }
    std::stable_sort(rows.begin(), rows.end(), [key](const QStringList &a, const QStringList &b) {
        return GenericLess(a[key], b[key]);
    });
    for (int i = 0; i < rows.size(); ++i) {
        for (int c = 0; c < Cols(); ++c) setTextMatrix(i + FixedRows(), c, rows[i][c]);
    }
}

int MSFlexGrid::ColWidth(int col) const
{
    return col >= 0 && col < m_colTwips.size() ? m_colTwips[col] : 0;
}

void MSFlexGrid::setColWidth(int col, int twips)
{
    if (col < 0 || col >= Cols())
        return;
    m_colTwips[col] = twips;
    setColumnHidden(col, twips <= 0);
    if (twips > 0)
        setColumnWidth(col, twipsToPixels(twips));
    shareSpareWidth();
}

void MSFlexGrid::setSpareWidthShared(bool on)
{
    m_shareSpare = on;
    if (on)
        horizontalHeader()->setStretchLastSection(false);
    shareSpareWidth();
}

bool MSFlexGrid::viewportEvent(QEvent *event)
{
    // The viewport narrows when the vertical scroll bar comes, too.
    if (event->type() == QEvent::Resize)
        shareSpareWidth();
    return QTableWidget::viewportEvent(event);
}

void MSFlexGrid::shareSpareWidth()
{
    if (!m_shareSpare)
        return;
    int own = 0;
    long sharing = 0;
    int last = -1;
    for (int c = 0; c < m_colTwips.size(); ++c) {
        if (m_colTwips[c] <= 0)
            continue;
        own += twipsToPixels(m_colTwips[c]);
        if (c > 0) {
            sharing += m_colTwips[c];
            last = c;
        }
    }
    const int spare = std::max(0, viewport()->width() - own);
    int given = 0;
    for (int c = 1; c <= last; ++c) {
        if (m_colTwips[c] <= 0)
            continue;
        const int extra = c == last ? spare - given : int(spare * m_colTwips[c] / sharing);
        given += extra;
        setColumnWidth(c, twipsToPixels(m_colTwips[c]) + extra);
    }
}

int MSFlexGrid::Row() const
{
    return currentRow() < 0 ? 0 : currentRow() + FixedRows();
}

void MSFlexGrid::setRow(int row)
{
    if (row < FixedRows() || row >= Rows())
        return;
    setCurrentCell(row - FixedRows(), std::max(0, currentColumn()));
    selectCurrent();
}

int MSFlexGrid::Col() const
{
    return std::max(0, currentColumn());
}

void MSFlexGrid::setCol(int col)
{
    if (col < 0 || col >= Cols())
        return;
    if (currentRow() >= 0)
        setCurrentCell(currentRow(), col);
    m_colSel = col;
    selectCurrent();
}

void MSFlexGrid::setColSel(int col)
{
    m_colSel = std::clamp(col, 0, std::max(0, Cols() - 1));
    selectCurrent();
}

void MSFlexGrid::selectCurrent()
{
    const int r = currentRow();
    if (r < 0)
        return;
    clearSelection();
    const int from = std::min(Col(), m_colSel), to = std::max(Col(), m_colSel);
    setRangeSelected(QTableWidgetSelectionRange(r, from, r, to), true);
}

} // namespace platform
