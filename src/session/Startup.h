#pragma once

#include <QString>
#include <memory>

namespace lumivane {

class Database;

// Start-up up to the main window, and the settings of installation and project. The settings of the run stand in
// services/modMain.h, the open project in repository/Database.h.

/// Log, help file, options and project in this order. False when the program cannot go on; boxes have then said why.
bool Main_Start();
void Main_Exit();

bool GetOptionsSettings();
bool ReadOptions(const QString& File, bool FirstTry);
void SaveOptions();
QString GetSystemSettings(const QString& Key);
bool SaveSystemSettings(const QString& Key, const QString& Value);
bool DeleteSystemSettings(const QString& Key);

QString GetRepositoryFile();
bool InitStandard();
bool InitRepository(std::shared_ptr<Database>& Database, const QString& FileName);
bool ValidateRepository(const QString& FileName);
/// Of a project that was refused: the sentence for its user when it is write-protected, in use by another program or on
/// a full disk; empty when the file itself is at fault.
QString whyNotOpened(const QString& FileName);
QString GetDefaultRepository();
void SaveDefaultRepository(const QString& FileName);

} // namespace lumivane
