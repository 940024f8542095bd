#include "repository/clsWorkspacePanel.h"

#include "platform/RuntimeError.h"
#include "support/PlainSheet.h"

#include <QStringList>
#include <cstdint>
#include <cstdlib>

using namespace lumivane;

namespace {

test::PlainSheet smallSheet()
{
    test::PlainSheet sheet(QStringLiteral("Data"));
    sheet.put(QStringLiteral("C9"), QStringLiteral("Total")).put(QStringLiteral("H52"), QStringLiteral("12"));
    sheet.setRowHeight(5, 7, 0);
    sheet.setColumnWidth(4, 5, 0);
    return sheet;
}

void passOver(const auto& step)
{
    try {
        step();
    } catch (const RuntimeError&) {
    }
}

/// An address that was read means the same when it is written and read again, in both forms.
void checkAddress(const QString& text)
{
    const auto area = CellArea::parse(text);
    if (area && (CellArea::parse(area->absolute()) != area || CellArea::parse(area->relative()) != area))
        std::abort();
}

} // namespace

// The texts of a stored panel come from shared files too: one line for each of its fields.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QStringList fields =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split(u'\n');
    for (const QString& field : fields)
        checkAddress(field);

    test::PlainSheet sheet = smallSheet();
    clsWorkspacePanel panel;
    panel.RelativeTo = fields.value(0);
    panel.PicRange = fields.value(1);
    panel.ContentMatch = fields.value(2);
    panel.RowHeights = fields.value(3).left(255);
    panel.ColWidths = fields.value(4).left(255);
    clsWorkspacePanel adjusted = panel;
    passOver([&] { panel.GetAdjRange(sheet); });
    passOver([&] { panel.SetAnchorDefaults(sheet); });
    passOver([&] {
        // What is to be drawn is either refused by the sheet or a rectangle with both its letters.
        const auto area = CellArea::parse(panel.adjRange(sheet));
        if (area && (area->lastColumn > 256 || area->lastRow > 32767))
            std::abort();
    });

    adjusted.AdjustAll(sheet);
    const QString once = adjusted.PicRange;
    clsWorkspacePanel pasted;
    passOver([&] { pasted.PasteRange(sheet, fields.value(5)); });
    if (once.count(u'`') < 2)
        std::abort();
    return 0;
}
