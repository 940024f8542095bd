#pragma once

#include "tools/CommandLine.h"

namespace lumivane {

// The commands of lumivanectl. Each prints its result on the standard output, throws RuntimeError with a sentence for
// the user where it fails as a whole, and answers the exit status: 0, or 1 where a part of its work failed.

int newLogCommand(const CommandLine& line);      ///< FILE
int newProjectCommand(const CommandLine& line);  ///< FILE
int sqlCommand(const CommandLine& line);         ///< PROJECT STATEMENT
int inspectCommand(const CommandLine& line);     ///< WORKBOOK
int renderCommand(const CommandLine& line);      ///< WORKBOOK SHEET RANGE OUT.png
int renderChartCommand(const CommandLine& line); ///< WORKBOOK SHEET NAME OUT.png
int locateCommand(const CommandLine& line);      ///< WORKBOOK SHEET
int refreshCommand(const CommandLine& line);     ///< PROJECT [DASHBOARD]
int snapshotCommand(const CommandLine& line);    ///< PROJECT DASHBOARD OUT.png
int exportCommand(const CommandLine& line);      ///< PROJECT OUT.lvds [DASHBOARD...]
int importCommand(const CommandLine& line);      ///< PROJECT SHARED.lvds [DASHBOARD...]

/// Runs the command that the words name and answers the exit status of the program. Failures and usage are printed on
/// the standard error output.
int runCommand(const QStringList& words);

} // namespace lumivane
