#pragma once

#include "panel/PanelPipeline.h"

namespace lumivane {

class Application;
class Window;

/// Fills a panel from what the user has selected in their spreadsheet and draws its first picture. The user's instance
/// is only read from: the picture is drawn by a worker from the workbook's file. Refusals are told by `prompts()`.
class PanelPaste
{
public:
    explicit PanelPaste(PanelPipeline& pipeline) : m_pipeline(pipeline) {}

    /// True when a picture was loaded. The panel may have been changed in part when it was not.
    bool Panel_Paste(const PanelPipeline::Record& Panel);

private:
    XLInstance GetUserExcel();
    bool pasteSelection(Application& user, const PanelPipeline::Record& Panel);
    bool pasteRange(Window& window, Worksheet& sheet, const QString& path, const PanelPipeline::Record& Panel);
    bool pasteShape(const QString& name, const std::shared_ptr<Worksheet>& sheet, const QString& path,
                    const PanelPipeline::Record& Panel);
    bool drawFirstPicture(const QString& path, const PanelPipeline::Record& Panel);

    PanelPipeline& m_pipeline;
};

} // namespace lumivane
