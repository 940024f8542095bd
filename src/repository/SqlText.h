#pragma once

#include <QDateTime>
#include <QString>

namespace lumivane {

// How values are written into statements. Every text of every statement passes here. Which texts have their apostrophes
// doubled, and where a number has a blank in front, is part of each statement.

/// A text between apostrophes as it stands. One that would not stay one text there makes the whole statement fail
/// before anything of it is run: what follows its apostrophe must never be read as a part of the statement.
QString textLiteral(const QString& text);
/// A text between apostrophes, its own apostrophes doubled: whatever it holds is stored as it is.
QString doubledLiteral(QString text);
/// Whether a text can pass textLiteral.
bool staysOneText(QStringView text);
/// For a dialog, before anything is stored: the sentence that says why a text cannot be kept, or empty where it can.
/// `noun` says what it is, as "path of the workbook".
QString unstorable(const QString& noun, const QString& text);

/// "#2026-11-24 10:30:00#"
QString dateLiteral(const QDateTime& time);
/// "#2026-11-24 10:30:00+01:00#": for times that are compared with those of files.
QString instantLiteral(const QDateTime& time);
/// With a blank in the place of the sign, where there is none.
QString blankedNumber(qint64 number);

/// The first text of a statement that did not stay one; null when there is none.
QString refusedText(const QString& statement);
/// A statement as it is logged: without the marks of texts that were refused.
QString readableStatement(QString statement);

} // namespace lumivane
