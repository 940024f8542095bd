#pragma once

#include "platform/RuntimeError.h"

namespace lumivane::engine {

/// Why a workbook file cannot be read, for callers that act on it.
enum class ReadCause {
    NotFound,      ///< there is no such file
    NotOpened,     ///< the system does not let it be opened or read
    NotAWorkbook,  ///< it is something else: empty, a picture, a web page
    FormatNotRead, ///< a workbook in a format that is not read here but that a spreadsheet program may well open
    Protected,     ///< by a password
    Damaged,
    TooLarge, ///< over one of the bounds
    Changed,  ///< another file than the one that was opened
};

/// What is wrong with a file, as the end of a sentence: "entry "xl/styles.xml" does not match its checksum". Thrown
/// inside the readers only; WorkbookFile makes of it the ReadError that names file and sheet.
struct Fault
{
    QString what;
    ReadCause cause = ReadCause::Damaged;
};

/// A sentence for the user that names the file, and the sheet where it is one sheet that cannot be read.
class ReadError : public RuntimeError
{
public:
    ReadError(ReadCause cause, const QString& sentence)
        : RuntimeError(cause == ReadCause::NotFound ? FileNotFound : ApplicationDefined, sentence), m_cause(cause)
    {
    }

    ReadCause cause() const { return m_cause; }

private:
    ReadCause m_cause;
};

} // namespace lumivane::engine
