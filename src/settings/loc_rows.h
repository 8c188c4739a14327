#pragma once
// The built-in interface-text tables, one data file per language (loc_rows_*.cpp). Read through
// builtInRows() in loc_table.h. Constant data; any thread.

#include <span>

#include "settings/loc_table.h"

namespace vesko::loc_rows {

std::span<const LocRow> english();
std::span<const LocRow> simplifiedChinese();
std::span<const LocRow> traditionalChinese();
std::span<const LocRow> polish();
std::span<const LocRow> russian();
std::span<const LocRow> thai();

}  // namespace vesko::loc_rows
