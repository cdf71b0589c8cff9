// The row pass over rows that a source writes.
#pragma once

#include <filt/fft/internal/kernel/transform.h>
#include <filt/fft/internal/kernel/work.h>

#include <algorithm>

namespace mvi {

/// Writes row y of a source and enters it in the table of rows. The rows behind those of the source
/// are alike: the first of them serves for all. Returns whether there is a row to transform.
inline bool writeRow(Work& work, const RowSource& source, float* plane, long y) {
    const long filled = source.rows(), pitch = 2 * work.size.x;
    float* const row = plane + pitch * std::min(y, filled);
    work.row(y) = row;
    if (y < filled) source.write(y, row);
    if (y == filled) std::fill_n(row, pitch, 0.0f);
    return y <= filled;
}

/// Calls transform(rows, count), which transforms rows in place, for all rows of a source.
template <class Transform>
void passSourceRows(Work& work, const RowSource& source, float* plane, Transform transform) {
    passRows(work.size.y, RowBand(work.size.y), [&](const long* numbers, long count) {
        float* rows[kRowsPerStep];
        long rowCount = 0;
        for (long i = 0; i < count; ++i) {
            const bool isNew = writeRow(work, source, plane, numbers[i]);
            if (isNew) rows[rowCount++] = plane + 2 * work.size.x * numbers[i];
        }
        if (rowCount > 0) transform(rows, rowCount);
    });
}

}  // namespace mvi
