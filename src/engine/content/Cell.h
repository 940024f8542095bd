#pragma once

#include <QString>
#include <string_view>

namespace lumivane::engine {

enum class CellKind : quint8 {
    Blank, ///< carries a style only
    Number,
    Text,       ///< `text` is an index into WorkbookContent::texts
    SheetText,  ///< `text` is an index into SheetContent::texts (inline strings, results of formulas)
    Boolean,    ///< `number` is 0 or 1
    Error,      ///< `text` is an ErrorCode
    Uncomputed, ///< a formula for which the file stores no result
};

enum class ErrorCode : quint8 { Null, Div0, Value, Ref, Name, Num, NA, GettingData, Spill, Calc };
/// By ErrorCode.
inline constexpr std::string_view errorNames[] = {"#NULL!", "#DIV/0!", "#VALUE!",       "#REF!",   "#NAME?",
                                                  "#NUM!",  "#N/A",    "#GETTING_DATA", "#SPILL!", "#CALC!"};
QString errorText(ErrorCode code); ///< "#DIV/0!"

/// One cell, 16 bytes. A sheet keeps all of them in one block, row by row, columns ascending.
struct Cell
{
    union {
        double number;
        quint64 text;
    };
    quint32 style = 0; ///< index into StyleTable::cells
    quint16 column = 0;
    CellKind kind = CellKind::Blank;
    bool formula = false;

    Cell() : number(0) {}
};
static_assert(sizeof(Cell) == 16);

} // namespace lumivane::engine
