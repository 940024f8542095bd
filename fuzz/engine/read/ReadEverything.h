#pragma once

#include "engine/read/WorkbookFile.h"

#include <QFile>
#include <unistd.h>

namespace lumivane::fuzz {

/// The path of a file in memory with these bytes.
inline QString fileOf(const void* bytes, size_t size)
{
    static const QString path = QStringLiteral("/dev/shm/lumivane-fuzz-%1").arg(getpid());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        abort();
    file.write(static_cast<const char*>(bytes), qint64(size));
    return path;
}

/// Reads a file, every sheet of it, and every text that a sheet refers to. A failure with a sentence is a good end;
/// anything else is for the sanitizers.
inline void readEverything(const QString& path)
{
    try {
        const auto file = engine::WorkbookFile::open(path);
        const auto& book = file->content();
        for (int i = 0; i < int(book->sheets.size()) && i < 20; ++i) {
            const auto sheet = file->sheet(i);
            for (size_t row = 0; row < sheet->rows.size(); ++row) {
                for (auto [cell, last] = sheet->rowCells(row); cell != last; ++cell) {
                    if (cell->kind == engine::CellKind::Text && cell->text >= quint64(book->texts.size()))
                        abort();
                    if (cell->kind == engine::CellKind::SheetText && cell->text >= quint64(sheet->texts.size()))
                        abort();
                    if (sheet->find(sheet->rows[row].row, cell->column) != cell)
                        abort(); // not in order
                }
            }
        }
    } catch (const RuntimeError& error) {
        if (!error.description().contains(path))
            abort(); // a failure must name its file
    }
}

} // namespace lumivane::fuzz
