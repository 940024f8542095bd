#include "panel/frmRangeRelative.h"

#include "controls/HelpButton.h"
#include "host/Host.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "range/PanelSheet.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modUtilsLog.h"

#include <QListView>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include "ui_frmRangeRelative.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// In the order of the list.
const QStringList rangeRules{u"top"_s, u"bottom"_s, u"contents"_s};
constexpr int bottomRule = 1;
constexpr int contentsRule = 2;

constexpr int shortestAnchor = 3;
constexpr int nothingChosen = 381; // "invalid property array index"

/// A copy of the panel whose stored definition, with the sheet's last cell, is that of this version of the workbook;
/// null where the range has not moved. The panel itself is left alone.
std::shared_ptr<const clsWorkspacePanel> movedDefinition(const clsWorkspacePanel& panel, Worksheet& ws)
{
    auto moved = std::make_shared<clsWorkspacePanel>(panel);
    moved->GetAdjRange(ws);
    if (moved->rowOffset() == 0 && moved->columnOffset() == 0)
        return nullptr;
    moved->AdjustAll(ws);
    moved->ContentMatch = u"bottom=" % LastFilledCell(ws);
    return moved;
}

/// On one line, and so that a date can be told from a number.
QString listText(const AnchorChoice& choice)
{
    const QString shown = choice.shown.isEmpty() ? QString() : QString(u" (" % choice.shown % u')');
    return QString(choice.value % shown).simplified();
}

} // namespace

frmRangeRelative::frmRangeRelative(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmRangeRelative>())
{
    ui->setupUi(this);
    Form_Load();
    connect(ui->cmbRelativeTo, &QComboBox::currentIndexChanged, this, &frmRangeRelative::cmbRelativeTo_Click);
    connect(ui->cmbAnchor, &QComboBox::currentIndexChanged, this, &frmRangeRelative::cmbAnchor_Click);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmRangeRelative::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
}

frmRangeRelative::~frmRangeRelative() = default;

void frmRangeRelative::Form_Load()
{
    ui->cmbRelativeTo->addItems({u"The same address as the current selection"_s,
                                 u"Start from the last row and last column with non-blank values"_s,
                                 u"The block of cells containing the value I will specify below"_s});
    ui->cmbRelativeTo->setCurrentIndex(-1);
    if (auto* list = qobject_cast<QListView*>(ui->cmbAnchor->view()))
        list->setUniformItemSizes(true); // thousands of values are not measured one by one
    // The dialog keeps its size when the frame comes and goes.
    QSizePolicy policy = ui->fraAnchor->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    ui->fraAnchor->setSizePolicy(policy);
    ui->fraAnchor->hide();
}

int frmRangeRelative::exec()
{
    return Form_Activate() ? QDialog::exec() : int(Rejected);
}

bool frmRangeRelative::Form_Activate()
{
    if (Index < 0) {
        prompts().message(u"Invalid panel index."_s, Prompts::Icon::Critical);
        return false;
    }
    try {
        m_panel = gWorkspace ? gWorkspace->Panels(Index) : nullptr;
        if (!m_panel)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        showPanel();
        return true;
    } catch (const RuntimeError& error) {
        LogError(objectName(), u"Form_Activate"_s, error.number(), error.description(), true);
        return false;
    }
}

void frmRangeRelative::showPanel()
{
    if (const auto source = m_panel->Source())
        m_path = source->currentPath();
    m_panel->parseContentMatch(m_bottom, m_anchor, m_content);
    ui->cmbRelativeTo->setCurrentIndex(int(rangeRules.indexOf(m_panel->RelativeTo)));
}

void frmRangeRelative::cmbRelativeTo_Click()
{
    const int rule = ui->cmbRelativeTo->currentIndex();
    if (rule != contentsRule) {
        ui->fraAnchor->hide();
        return;
    }
    if (ui->cmbAnchor->count() == 0)
        PrepAnchorChoice();
    if (ui->cmbAnchor->count() > 0) {
        ui->fraAnchor->show();
        return;
    }
    prompts().message(u"There are no values in the selected range of cells that can be used to search for the range.  "
                      "Please choose another option."_s,
                      Prompts::Icon::Information);
    ui->cmbRelativeTo->setCurrentIndex(bottomRule);
}

void frmRangeRelative::PrepAnchorChoice()
{
    prompts().setPointer(Prompts::Pointer::Hourglass);
    m_choices.clear();
    const auto failure = [this]() -> std::optional<RuntimeError> {
        try {
            const PanelSheet opened(m_path, m_panel->SheetName);
            readChoices(opened.sheet());
            return std::nullopt;
        } catch (const RuntimeError& error) {
            return error;
        }
    }();
    // Where the places ran out, those found before are offered all the same.
    fillAnchors();
    prompts().setPointer(Prompts::Pointer::Default);
    if (failure) {
        LogError(objectName(), u"PrepAnchorChoice"_s, failure->number(), failure->description(), false);
        const QString notOpened = m_path % u" could not be opened, or did not contain the worksheet '" %
                                  m_panel->SheetName % u"'.  This panel's Range Location cannot be set.";
        const bool isLimit = failure->number() == RuntimeError::Overflow;
        prompts().message(isLimit ? failure->description() : notOpened, Prompts::Icon::Exclamation);
        return;
    }
    if (ui->cmbAnchor->count() > 0)
        ui->cmbAnchor->setCurrentIndex(0);
}

void frmRangeRelative::readChoices(Worksheet& ws)
{
    // On a copy: the panel changes with OK alone. The range is found anew, since the workbook may be another one than
    // the panel was drawn from.
    clsWorkspacePanel panel = *m_panel;
    panel.GetAdjRange(ws);
    if (m_content.isEmpty() || m_anchor.size() < shortestAnchor) {
        panel.SetAnchorDefaults(ws);
        m_anchor = panel.NewCell;
        m_content = panel.Content;
    }
    bool rowFixed = false, columnFixed = false;
    ParseAnchorAddress(m_anchor, rowFixed, columnFixed);
    if (rowFixed == columnFixed)
        columnFixed = true;
    ui->optFixed0->setChecked(columnFixed);
    ui->optFixed1->setChecked(!columnFixed);

    const SheetRange range = ws.Range(panel.adjMovRange());
    m_firstRow = range.Row();
    m_firstColumn = range.Column();
    m_moved = movedDefinition(*m_panel, ws);
    collectAnchorChoices(range, m_choices);
}

void frmRangeRelative::fillAnchors()
{
    auto* entries = new QStandardItemModel(ui->cmbAnchor);
    QList<QStandardItem*> items;
    items.reserve(qsizetype(m_choices.size()));
    for (const AnchorChoice& choice : m_choices)
        items.append(new QStandardItem(listText(choice)));
    entries->appendColumn(items);
    const QSignalBlocker blocker(ui->cmbAnchor);
    ui->cmbAnchor->setModel(entries);
    ui->cmbAnchor->setCurrentIndex(-1);
}

void frmRangeRelative::cmbAnchor_Click()
{
    const int chosen = ui->cmbAnchor->currentIndex();
    if (chosen < 0)
        return;
    const AnchorChoice& choice = m_choices[size_t(chosen)];
    m_content = choice.value;
    const AnchorCell cell(choice.place, m_firstRow, m_firstColumn);
    m_anchor = cell.anchor(ui->optFixed0->isChecked());
    ui->optFixed0->setText(u"Search for a cell with this value in &column '"_s % cell.column % u'\'');
    ui->optFixed1->setText(u"Search for a cell with this value in &row "_s % QString::number(cell.row));
}

void frmRangeRelative::cmdOK_Click()
{
    try {
        if (!CheckFix())
            return;
        const int rule = ui->cmbRelativeTo->currentIndex();
        const QString reason = rule == contentsRule ? unstorable(u"value to find"_s, m_content) : QString();
        if (!reason.isEmpty())
            return prompts().message(reason, Prompts::Icon::Exclamation);
        store(rule < 0 ? m_panel->RelativeTo : rangeRules[rule]);
        accept();
    } catch (const RuntimeError& error) {
        prompts().setPointer(Prompts::Pointer::Default);
        LogError(objectName(), u"cmdOK_Click"_s, error.number(), error.description(), true);
    }
}

void frmRangeRelative::store(const QString& rule)
{
    const bool byContents = rule == rangeRules[contentsRule];
    if (byContents && ui->cmbAnchor->currentIndex() < 0)
        throw RuntimeError(nothingChosen, u"No value to find is chosen. Choose one from the list."_s);
    // The option buttons may have been changed since the value was chosen.
    if (byContents)
        cmbAnchor_Click();
    keepFoundRange(rule);
    m_panel->RelativeTo = rule;
    m_panel->ContentMatch = u"bottom=" % m_bottom;
    if (byContents)
        m_panel->ContentMatch += u"`anchor=" % m_anchor % u"`content=" % m_content;
}

void frmRangeRelative::keepFoundRange(const QString& rule)
{
    // In the workbook's present version the range may lie elsewhere than stored: then an anchor in today's cells, or
    // today's address, would go with a range of the version before. The last cell is stored together with the range,
    // and stays with it.
    const bool measuredAsStored = rule == rangeRules[bottomRule] && !m_bottom.isEmpty();
    if (measuredAsStored)
        return;
    if (!m_moved && (m_panel->rowOffset() != 0 || m_panel->columnOffset() != 0)) {
        prompts().setPointer(Prompts::Pointer::Hourglass);
        try {
            const PanelSheet opened(m_path, m_panel->SheetName);
            m_moved = movedDefinition(*m_panel, opened.sheet());
        } catch (const RuntimeError& error) {
            // The rule can be changed without the workbook; the range stays as stored.
            LogError(objectName(), u"keepFoundRange"_s, error.number(), error.description(), false);
        }
        prompts().setPointer(Prompts::Pointer::Default);
    }
    if (!m_moved)
        return;
    m_panel->PicRange = m_moved->PicRange;
    m_panel->RowHeights = m_moved->RowHeights;
    m_panel->ColWidths = m_moved->ColWidths;
    m_panel->movRange.clear(); // so that the new definition is read
    QString anchor, content;
    m_moved->parseContentMatch(m_bottom, anchor, content);
}

} // namespace lumivane
