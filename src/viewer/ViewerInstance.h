#pragma once

#include "host/Host.h"

namespace lumivane {

/// The open workbook windows as the user's spreadsheet program: what is open, shown and selected in them. Everything is
/// looked up when it is asked for, so that an instance that is held sees what the user does meanwhile. The workbooks
/// cannot be changed through it; attempts throw.
class ViewerInstance : public Application
{
public:
    ViewerInstance();

    /// Shows the workbook in a window, in that one which has it already if there is one.
    std::shared_ptr<Workbook> Open(const QString& path, bool updateLinks = false) override;
    int WorkbooksCount() const override;
    std::shared_ptr<Workbook> WorkbookItem(int index) override; ///< in the order of the windows' opening
    std::shared_ptr<Workbook> ActiveWorkbook() override;        ///< of the window used last
    std::shared_ptr<Worksheet> ActiveSheet() override;
    std::shared_ptr<Window> ActiveWindow() override;
    void BringToFront() override;
    void Quit() override; ///< closes all workbook windows
};

} // namespace lumivane
