#include "screens/frmSetImport.h"
#include "common/sm_Text.h"
#include "common/ui/sm_Forms.h"
#include "platform/Dialogs.h"
#include "platform/ui/KeyCodes.h"
#include "platform/ui/MSFlexGrid.h"
#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

namespace {

const QColor kNotFound(255, 200, 200);
const QColor kOutside(255, 240, 170);

platform::MSFlexGrid *grid(const QString &name, QWidget *parent)
{
    auto *g = new platform::MSFlexGrid(parent);
    g->setObjectName(name);
    g->setSelectionBehavior(QAbstractItemView::SelectRows);
    g->setSelectionMode(QAbstractItemView::SingleSelection);
    return g;
}

void format(platform::MSFlexGrid *g, const QStringList &headings, const QList<int> &twips)
{
    g->Clear();
    g->setFixedRows(1);
    g->setCols(static_cast<int>(headings.size()));
    g->setRows(1);
    for (int c = 0; c < headings.size(); ++c) {
        g->setTextMatrix(0, c, headings[c]);
        g->setColWidth(c, twips[c]);
    }
    g->horizontalHeader()->setStretchLastSection(true);
}

void paintRow(platform::MSFlexGrid *g, int row, const QColor &colour)
{
    for (int c = 0; c < g->Cols(); ++c) {
        if (QTableWidgetItem *cell = g->item(row - g->FixedRows(), c))
            cell->setBackground(colour);
    }
}

QLabel *heading(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

frmSetImport::frmSetImport(QWidget *parent) : KeyPreviewForm(parent)
{
    setWindowTitle("Import Sets");
    lblPackage = new QLabel(this);
    lblPackage->setObjectName("lblPackage");
    lblPackage->setWordWrap(true);
    fgrdSets = grid("fgrdSets", this);
    fgrdKeys = grid("fgrdKeys", this);
    fgrdPictures = grid("fgrdPictures", this);
    ckSpecial = new QCheckBox("Replace this store's special keys with the package's "
                              "(SPECIAL.BDF; a version is kept)",
                              this);
    ckSpecial->setObjectName("ckSpecial");
    ckCoupon = new QCheckBox("Replace this store's coupon keys with the package's "
                             "(COUPON.BDF; a version is kept)",
                             this);
    ckCoupon->setObjectName("ckCoupon");
    lblStatus = new QLabel(this);
    lblStatus->setObjectName("lblStatus");
    lblStatus->setWordWrap(true);
    cmdOkCancel[0] = new QPushButton("F10 Import", this);
    cmdOkCancel[1] = new QPushButton("Esc Cancel", this);
    for (int i = 0; i < 2; ++i) {
        cmdOkCancel[i]->setObjectName("cmdOkCancel");
        cmdOkCancel[i]->setAutoDefault(false);
        cmdOkCancel[i]->setMinimumHeight(40);
        connect(cmdOkCancel[i], &QPushButton::clicked, this, [this, i] { cmdOkCancel_Click(i); });
    }

    auto *layout = new QGridLayout(this);
    layout->addWidget(lblPackage, 0, 0, 1, 2);
    layout->addWidget(heading("Sets, and the number each gets in this store", this), 1, 0);
    layout->addWidget(heading("Pictures", this), 1, 1);
    layout->addWidget(fgrdSets, 2, 0);
    layout->addWidget(fgrdPictures, 2, 1);
    layout->addWidget(heading("Keys that sell an item or open a set", this), 3, 0, 1, 2);
    layout->addWidget(fgrdKeys, 4, 0, 1, 2);
    layout->addWidget(ckSpecial, 5, 0, 1, 2);
    layout->addWidget(ckCoupon, 6, 0, 1, 2);
    layout->addWidget(lblStatus, 7, 0, 1, 2);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOkCancel[0]);
    buttons->addWidget(cmdOkCancel[1]);
    layout->addLayout(buttons, 8, 0, 1, 2);
    layout->setColumnStretch(0, 3);
    layout->setColumnStretch(1, 2);
    layout->setRowStretch(2, 2);
    layout->setRowStretch(4, 3);
    resize(1100, 760);
}

void frmSetImport::Form_Load()
{
    gpForm_initControls(this);
    Canceled = true;
    lblPackage->setText(
        QString("Package %1, made by store %2 (%3) on %4.")
            .arg(QDir::toNativeSeparators(Plan.file), Plan.storeNumber, Plan.storeName, Plan.date));
    ckSpecial->setVisible(Plan.hasSpecial);
    ckSpecial->setChecked(Plan.special);
    ckCoupon->setVisible(Plan.hasCoupon);
    ckCoupon->setChecked(Plan.coupon);
    mpSets_fill();
    mpKeys_fill();
    mpPictures_fill();
    mpStatus_show();
}

void frmSetImport::mpSets_fill()
{
    format(fgrdSets, {"Set", "Title", "Number here", "What happens"}, {600, 2400, 1300, 4000});
    txtNumber.clear();
    for (const setpackage::PackageSet &set : Plan.sets)
        fgrdSets->AddItem(set.number + '\t' + set.title + "\t\t" + setOutcome(Plan, set));
    for (int row = 1; row < fgrdSets->Rows(); ++row) {
        auto *number = new QSpinBox(fgrdSets);
        number->setObjectName("txtNumber");
        number->setRange(1, 999);
        number->setValue(Plan.sets[row - 1].target.toInt());
        fgrdSets->setCellWidget(row - 1, 2, number);
        txtNumber << number;
        connect(number, &QSpinBox::valueChanged, this,
                [this, row](int value) { mpSetNumber_change(row, value); });
    }
}

void frmSetImport::mpSetNumber_change(int row, int number)
{
    setpackage::PackageSet &set = Plan.sets[row - 1];
    set.target = gfsText_pad(1, 2, QString::number(number), "0");
    if (txtNumber[row - 1]->value() != number)
        txtNumber[row - 1]->setValue(number); // comes back here once more
    fgrdSets->setTextMatrix(row, 3, setOutcome(Plan, set));
    mpKeys_fill();
    mpStatus_show();
}

void frmSetImport::mpKeys_fill()
{
    struct Row {
        int set, group, key;
        QStringList cells;
        QColor colour;
    };
    QList<Row> rows;
    for (const setpackage::ItemKey &k : Plan.items) {
        const QString package = k.item + "  " + k.source.description;
        rows << Row{k.set,
                    k.group,
                    k.key,
                    {Plan.sets[k.set].number, QString::number(k.group), QString::number(k.key),
                     k.caption, package, itemOutcome(k)},
                    k.match == setpackage::Match::None ? kNotFound : QColor()};
    }
    for (const setpackage::LinkKey &k : Plan.links) {
        bool inside = false;
        targetLink(Plan, k.link, &inside);
        rows << Row{k.set,
                    k.group,
                    k.key,
                    {Plan.sets[k.set].number, QString::number(k.group), QString::number(k.key),
                     k.caption, "opens set " + k.link, linkOutcome(Plan, k)},
                    inside ? QColor() : kOutside};
    }
    std::sort(rows.begin(), rows.end(), [](const Row &a, const Row &b) {
        return std::tie(a.set, a.group, a.key) < std::tie(b.set, b.group, b.key);
    });
    const int top = fgrdKeys->verticalScrollBar() ? fgrdKeys->verticalScrollBar()->value() : 0;
    format(fgrdKeys, {"Set", "Column", "Key", "Label", "In the package", "In this store"},
           {600, 800, 600, 2000, 3600, 5000});
    QList<QStringList> cells;
    for (const Row &r : rows) cells << r.cells;
    fgrdKeys->AddItems(cells);
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].colour.isValid())
            paintRow(fgrdKeys, i + 1, rows[i].colour);
    }
    fgrdKeys->verticalScrollBar()->setValue(top);
}

void frmSetImport::mpPictures_fill()
{
    format(fgrdPictures, {"Picture", "What happens"}, {1800, 3000});
    for (const setpackage::Picture &p : Plan.pictures)
        fgrdPictures->AddItem(p.name + '\t' + pictureOutcome(p));
    for (const QString &name : Plan.missingPictures) {
        fgrdPictures->AddItem(name + "\tnamed by keys, not in the package");
        paintRow(fgrdPictures, fgrdPictures->Rows() - 1, kOutside);
    }
}

void frmSetImport::mpStatus_show()
{
    const int notFound =
        static_cast<int>(std::count_if(Plan.items.begin(), Plan.items.end(), [](const auto &k) {
            return k.match == setpackage::Match::None;
        }));
    const QString problem = checkTargets(Plan);
    QString text = QString("%1 sets, %2 keys that sell an item (%3 not found in this "
                           "store's inventory, marked red), %4 pictures.")
                       .arg(Plan.sets.size())
                       .arg(Plan.items.size())
                       .arg(notFound)
                       .arg(Plan.pictures.size());
    if (!problem.isEmpty())
        text += "<br><b>" + problem.toHtmlEscaped() + "</b>";
    lblStatus->setText(text);
    cmdOkCancel[0]->setEnabled(problem.isEmpty());
}

void frmSetImport::cmdOkCancel_Click(int Index)
{
    if (Index == 1) {
        Canceled = true;
        reject();
        return;
    }
    const QString problem = checkTargets(Plan);
    if (!problem.isEmpty()) {
        platform::MsgBox(problem, platform::vbExclamation);
        return;
    }
    Plan.special = ckSpecial->isChecked();
    Plan.coupon = ckCoupon->isChecked();
    QProgressDialog progress("Importing the sets...", "Cancel", 0, 1, this);
    progress.setWindowTitle("Import Sets");
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(300);
    QString error;
    const bool written = writePlan(Plan, &error, [&progress](int done, int total) {
        progress.setMaximum(total);
        progress.setValue(done);
        QCoreApplication::processEvents();
        return !progress.wasCanceled();
    });
    if (!written) {
        platform::MsgBox(error, platform::vbCritical);
        return;
    }
    Canceled = false;
    accept();
}

void frmSetImport::Form_KeyDown(int &KeyCode, int Shift)
{
    Q_UNUSED(Shift);
    mpStandardKeys(
        KeyCode, [this] { cmdOkCancel[0]->click(); }, [this] { cmdOkCancel_Click(1); });
}
