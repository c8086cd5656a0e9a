#pragma once

#include "look/evaluate/values/value.h"

#include <cstdint>

namespace orrery::formula {

/// The value at a place of a table, which a single row or column repeats and whole columns and rows
/// have up to the end of the sheet; else "#N/A".
const Value& ElementOf(const Array& table, std::int32_t row, std::int32_t column);

/// Whether tables have equally many rows and columns; whole ones have those of the sheet.
bool AreOfOneSize(const Array& one, const Array& other);

/// The rows and columns of what is made of tables value by value: as many as the largest has. Whole
/// columns and rows stay cut to what is used, unless a table goes on to the end of the sheet.
class JoinedShape {
public:
    JoinedShape() = default;
    explicit JoinedShape(const Array& table) { Add(table); }
    void Add(const Array& table);
    std::int32_t Rows() const { return rows_.Size(); }
    std::int32_t Columns() const { return columns_.Size(); }
    /// How many values `MakeArray` has.
    std::int64_t Size() const { return std::int64_t{Rows()} * Columns(); }
    /// How many places of the sheet the value at a place stands for.
    double PlacesOf(std::int32_t row, std::int32_t column) const;
    /// A table of that shape without values.
    Array MakeArray() const;

private:
    /// Rows, or columns.
    class Side {
    public:
        explicit Side(std::int32_t limit) : limit_(limit) {}
        void Add(std::int32_t size, bool isCut);
        std::int32_t Size() const;
        bool IsCut() const { return cut_ > 0 && Size() < limit_; }
        std::int32_t PlacesOf(std::int32_t at) const;

    private:
        std::int32_t limit_;     ///< the sheet's
        std::int32_t whole_ = 1; ///< of the largest one that is not cut
        std::int32_t cut_ = 0;   ///< of the largest one that is
    };
    Side rows_{kSheetRows};
    Side columns_{kSheetColumns};
};

} // namespace orrery::formula
