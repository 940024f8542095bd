#pragma once

class QJsonArray;
class QJsonObject;
class QImage;
class QString;

namespace lumivane {

/// On the standard output, compact, with a line end. The keys of an object stand in the order of the alphabet.
void printJson(const QJsonObject& object);
void printJson(const QJsonArray& array);
void printLine(const QString& line);
/// On the standard error output, with a line end: nothing in the text acts on the terminal. `remark` stands behind it.
void printError(const QString& text, const char* remark = "");

/// Writes a picture as PNG, the whole file or nothing. Throws RuntimeError naming the file.
void writePicture(const QImage& picture, const QString& file);

} // namespace lumivane
