#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvox::indexer::readers {

/// The format code of a spreadsheet's built-in number format (SpreadsheetML numFmtId), as
/// an English-language spreadsheet shows it; empty for the ids not rendered here.
std::string_view builtinNumberFormat(int id);

/// value as a cell with this format code shows it: General, fixed decimals, thousands
/// separators, percent, scientific, and dates and times (English month and day names).
/// Nothing when the code uses what is not rendered here (conditions, fractions), so that
/// the caller shows the stored value instead. date1904 picks the workbook's date system.
std::optional<std::string> formatNumber(double value, std::string_view code, bool date1904);

} // namespace tallyvox::indexer::readers
