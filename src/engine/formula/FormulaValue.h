#pragma once

#include "engine/content/Cell.h"
#include "platform/CellArea.h"

#include <QString>
#include <concepts>
#include <memory>
#include <span>
#include <type_traits>
#include <variant>
#include <vector>

namespace lumivane::engine {

/// Cells of one sheet.
struct SheetArea
{
    int sheet = 0; ///< index into WorkbookContent::sheets
    CellArea cells;

    qint64 count() const { return qint64(cells.rows()) * cells.columns(); }
    bool isCell() const { return cells.rows() == 1 && cells.columns() == 1; }
    bool operator==(const SheetArea&) const = default;
};

class FormulaValue;

/// Values in rows and columns, as {1,2;3,4} gives them; at least one, at most FormulaLimits::arrayValues.
struct FormulaArray
{
    int rows = 0, columns = 0;
    std::vector<FormulaValue> values; ///< row by row

    const FormulaValue& at(int row, int column) const; ///< from 0
};

/// What a formula, a part of one or a cell gives.
class FormulaValue
{
public:
    enum class Kind : quint8 {
        Blank,
        Number,
        Text,
        Boolean,
        Error,
        Area,  ///< cells, not yet looked at
        Areas, ///< several of them, from a union
        Array,
    };
    using Areas = std::vector<SheetArea>;

    FormulaValue() = default;
    template <class N>
    requires(std::is_arithmetic_v<N> && !std::same_as<N, bool>) FormulaValue(N number)
        : m_content(static_cast<double>(number))
    {
    }
    FormulaValue(std::same_as<bool> auto truth) : m_content(truth) {}
    FormulaValue(QString text) : m_content(std::move(text)) {}
    FormulaValue(ErrorCode error) : m_content(error) {}
    FormulaValue(const SheetArea& area) : m_content(area) {}
    FormulaValue(Areas areas) : m_content(std::make_shared<const Areas>(std::move(areas))) {}
    FormulaValue(FormulaArray array) : m_content(std::make_shared<const FormulaArray>(std::move(array))) {}

    Kind kind() const { return static_cast<Kind>(m_content.index()); }
    bool isBlank() const { return kind() == Kind::Blank; }
    bool isNumber() const { return kind() == Kind::Number; }
    bool isText() const { return kind() == Kind::Text; }
    bool isBoolean() const { return kind() == Kind::Boolean; }
    bool isError() const { return kind() == Kind::Error; }
    bool isReference() const { return kind() == Kind::Area || kind() == Kind::Areas; }
    bool isArray() const { return kind() == Kind::Array; }

    // Each only of a value of its kind.
    double number() const { return std::get<double>(m_content); }
    const QString& text() const { return std::get<QString>(m_content); }
    bool boolean() const { return std::get<bool>(m_content); }
    ErrorCode error() const { return std::get<ErrorCode>(m_content); }
    const FormulaArray& array() const { return *std::get<std::shared_ptr<const FormulaArray>>(m_content); }
    std::span<const SheetArea> areas() const; ///< of a reference; never empty

private:
    std::variant<std::monostate, double, QString, bool, ErrorCode, SheetArea, std::shared_ptr<const Areas>,
                 std::shared_ptr<const FormulaArray>>
        m_content;
};

inline const FormulaValue& FormulaArray::at(int row, int column) const
{
    return values[static_cast<size_t>(row) * static_cast<size_t>(columns) + static_cast<size_t>(column)];
}

inline std::span<const SheetArea> FormulaValue::areas() const
{
    if (const SheetArea* one = std::get_if<SheetArea>(&m_content))
        return {one, 1};
    return *std::get<std::shared_ptr<const Areas>>(m_content);
}

} // namespace lumivane::engine
