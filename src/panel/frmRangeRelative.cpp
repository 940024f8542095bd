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
#include <QScopeGuard>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <algorithm>

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
    if (moved->PicRange.startsWith(u'`'))
        return nullptr; // an empty sheet has no place for it
    moved->ContentMatch = u"bottom=" % LastFilledCell(ws);
    return moved;
}

/// "$B$2:$C$4" as it is read: "B2:C4".
QString plainAddress(QString address)
{
    return address.section(u'`', 0, 0).remove(u'$');
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
    connect(ui->optFixed0, &QRadioButton::toggled, this, &frmRangeRelative::cmbAnchor_Click);
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
    m_hasStoredValue = !m_content.isEmpty() && m_anchor.size() >= shortestAnchor;
    lookAtWorkbook();
    ui->cmbRelativeTo->setCurrentIndex(int(rangeRules.indexOf(m_panel->RelativeTo)));
}

void frmRangeRelative::lookAtWorkbook()
{
    try {
        m_moved = movedDefinition(*m_panel, sheet());
    } catch (const RuntimeError& error) {
        // A rule can be chosen without the workbook; the range stays as stored.
        LogError(objectName(), u"Form_Activate"_s, error.number(), error.description(), false);
    }
}

Worksheet& frmRangeRelative::sheet()
{
    if (!m_opened) {
        prompts().setPointer(Prompts::Pointer::Hourglass);
        const auto end = qScopeGuard([] { prompts().setPointer(Prompts::Pointer::Default); });
        m_opened = std::make_unique<PanelSheet>(m_path, m_panel->SheetName);
    }
    return m_opened->sheet();
}

void frmRangeRelative::cmbRelativeTo_Click()
{
    const int rule = ui->cmbRelativeTo->currentIndex();
    if (rule == contentsRule && ui->cmbAnchor->count() == 0)
        PrepAnchorChoice();
    ui->fraAnchor->setVisible(rule == contentsRule && ui->cmbAnchor->count() > 0);
    showFound();
    if (rule != contentsRule || ui->cmbAnchor->count() > 0)
        return;
    prompts().message(u"There are no values in the selected range of cells that can be used to search for the range.  "
                      "Please choose another option."_s,
                      Prompts::Icon::Information);
    ui->cmbRelativeTo->setCurrentIndex(bottomRule);
}

void frmRangeRelative::showFound()
{
    QString text = u"Stored address: %1"_s.arg(plainAddress(m_panel->PicRange));
    try {
        text += u'\n' + foundText();
    } catch (const RuntimeError&) {
        text += u"\nBy this rule the range is not found in the present version of the workbook."_s;
    }
    ui->lblFound->setText(text);
}

QString frmRangeRelative::foundText()
{
    const int rule = ui->cmbRelativeTo->currentIndex();
    if (!m_opened)
        return u"What a rule finds now is not known, because the workbook cannot be read."_s;
    if (rule < 0)
        return {};
    clsWorkspacePanel found = answer(rangeRules[rule]);
    found.GetAdjRange(sheet());
    const QString address = u"Found by this rule now: %1"_s.arg(plainAddress(found.adjMovRange()));
    if (rule != contentsRule)
        return address;
    const QString first = plainAddress(found.NewCell);
    const auto chosen = chosenCell();
    if (!chosen && m_hasStoredValue) {
        const bool isThere = sheet().Find(sheet().Range(first).area(), {m_content}).has_value();
        return address + (isThere ? u"\nThe stored value is found in %1."_s.arg(first)
                                  : u"\nThe stored value is not found now, so the range stays where it is stored."_s);
    }
    if (!chosen)
        return address;
    const QString wanted = chosen->column + QString::number(chosen->row);
    if (first == wanted)
        return address;
    return address +
           u"\nThe value in %1 is found first in %2. Choose another value, or the other direction of search."_s.arg(
               wanted, first);
}

void frmRangeRelative::PrepAnchorChoice()
{
    m_choices.clear();
    const auto failure = [this]() -> std::optional<RuntimeError> {
        try {
            readChoices(sheet());
            return std::nullopt;
        } catch (const RuntimeError& error) {
            return error;
        }
    }();
    // Where the places ran out, those found before are offered all the same.
    fillAnchors();
    if (failure) {
        LogError(objectName(), u"PrepAnchorChoice"_s, failure->number(), failure->description(), false);
        const QString notOpened = m_path % u" could not be opened, or did not contain the worksheet '" %
                                  m_panel->SheetName % u"'.  This panel's Range Location cannot be set.";
        const bool isLimit = failure->number() == RuntimeError::Overflow;
        prompts().message(isLimit ? failure->description() : notOpened, Prompts::Icon::Exclamation);
        return;
    }
    selectStoredValue();
}

void frmRangeRelative::selectStoredValue()
{
    const QString cell = plainAddress(m_anchorNow);
    int sameValue = -1;
    for (int i = int(m_choices.size()) - 1; i >= 0; --i) {
        if (m_choices[size_t(i)].value.compare(m_content, Qt::CaseInsensitive) != 0)
            continue;
        const AnchorCell at(m_choices[size_t(i)].place, m_firstRow, m_firstColumn);
        if (at.column + QString::number(at.row) == cell) {
            ui->cmbAnchor->setCurrentIndex(i);
            return;
        }
        sameValue = i;
    }
    if (sameValue >= 0 || !m_hasStoredValue)
        ui->cmbAnchor->setCurrentIndex(std::max(sameValue, 0));
    for (QWidget* option : {ui->optFixed0, ui->optFixed1})
        option->setEnabled(chosenCell().has_value()); // a stored value that is not offered stays as it is
}

std::optional<AnchorCell> frmRangeRelative::chosenCell() const
{
    const int chosen = ui->cmbAnchor->currentIndex();
    if (chosen < 0)
        return std::nullopt;
    return AnchorCell(m_choices[size_t(chosen)].place, m_firstRow, m_firstColumn);
}

void frmRangeRelative::readChoices(Worksheet& ws)
{
    // On a copy: the panel changes with OK alone. The range is found anew, since the workbook may be another one than
    // the panel was drawn from.
    clsWorkspacePanel panel = *m_panel;
    panel.GetAdjRange(ws);
    m_anchorNow = panel.NewCell.isEmpty() ? m_anchor : panel.NewCell;
    if (!m_hasStoredValue) {
        panel.SetAnchorDefaults(ws);
        m_anchor = panel.NewCell;
        m_content = panel.Content;
        m_anchorNow = m_anchor;
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
    if (m_hasStoredValue)
        ui->cmbAnchor->setPlaceholderText(u"%1 (as stored)"_s.arg(m_content.simplified()));
    ui->cmbAnchor->setModel(entries);
    ui->cmbAnchor->setCurrentIndex(-1);
}

void frmRangeRelative::cmbAnchor_Click()
{
    const auto cell = chosenCell();
    if (!cell)
        return;
    m_hasStoredValue = false;
    ui->optFixed0->setEnabled(true);
    ui->optFixed1->setEnabled(true);
    m_content = m_choices[size_t(ui->cmbAnchor->currentIndex())].value;
    m_anchor = cell->anchor(ui->optFixed0->isChecked());
    ui->optFixed0->setText(u"Search for a cell with this value in &column '"_s % cell->column % u'\'');
    ui->optFixed1->setText(u"Search for a cell with this value in &row "_s % QString::number(cell->row));
    showFound();
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
        LogError(objectName(), u"cmdOK_Click"_s, error.number(), error.description(), true);
    }
}

void frmRangeRelative::store(const QString& rule)
{
    const bool byContents = rule == rangeRules[contentsRule];
    if (byContents && !chosenCell()) {
        if (!m_hasStoredValue || m_panel->RelativeTo != rule)
            throw RuntimeError(nothingChosen, u"No value to find is chosen. Choose one from the list."_s);
        return; // a value that is not there at the moment is kept for the versions to come
    }
    // The option buttons may have been changed since the value was chosen.
    if (byContents)
        cmbAnchor_Click();
    const clsWorkspacePanel changed = answer(rule);
    m_panel->PicRange = changed.PicRange;
    m_panel->RowHeights = changed.RowHeights;
    m_panel->ColWidths = changed.ColWidths;
    m_panel->movRange = changed.movRange;
    m_panel->RelativeTo = changed.RelativeTo;
    m_panel->ContentMatch = changed.ContentMatch;
}

clsWorkspacePanel frmRangeRelative::answer(const QString& rule) const
{
    clsWorkspacePanel changed = *m_panel;
    QString bottom = m_bottom;
    // In the workbook's present version the range may lie elsewhere than stored: then an anchor in today's cells, or
    // today's address, would go with a range of the version before. The last cell is stored together with the range,
    // and stays with it.
    const bool measuredAsStored = rule == rangeRules[bottomRule] && !m_bottom.isEmpty();
    if (m_moved && !measuredAsStored) {
        changed.PicRange = m_moved->PicRange;
        changed.RowHeights = m_moved->RowHeights;
        changed.ColWidths = m_moved->ColWidths;
        changed.movRange.clear(); // so that the new definition is read
        QString anchor, content;
        m_moved->parseContentMatch(bottom, anchor, content);
    }
    changed.RelativeTo = rule;
    changed.ContentMatch = u"bottom=" % bottom;
    if (rule == rangeRules[contentsRule])
        changed.ContentMatch += u"`anchor=" % m_anchor % u"`content=" % m_content;
    return changed;
}

} // namespace lumivane
