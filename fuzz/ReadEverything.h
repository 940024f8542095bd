#pragma once

#include "engine/read/WorkbookReader.h"

#include <QFile>
#include <unistd.h>

namespace lumivane::fuzz {

/// Reads a file with these bytes, every sheet of it, and every text that a sheet refers to. A failure that is told is
/// a good end; anything else is for the sanitizers.
inline void readEverything(const char* bytes, qint64 size)
{
    static const QString path = QStringLiteral("/dev/shm/lumivane-fuzz-%1").arg(getpid());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        abort();
    file.write(bytes, size);
    file.close();
    try {
        const auto book = engine::readWorkbook(path);
        for (int i = 0; i < int(book->sheets.size()) && i < 20; ++i) {
            const auto sheet = book->sheet(i);
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
