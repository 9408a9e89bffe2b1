// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/boxrecord.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace {

constexpr char kRecordEnd = 0x1E;
constexpr char kSpansMark[] = "S,";

// Takes a decimal number and the `separator` behind it off the front; false when that is not what stands
// there.
bool takeNumber(std::string_view& rest, char separator, int& number)
{
    const std::size_t end = rest.find(separator);
    if (end == std::string_view::npos || end == 0 || end > 10)
        return false;
    const std::string digits(rest.substr(0, end));
    char* stop = nullptr;
    number = static_cast<int>(std::strtol(digits.c_str(), &stop, 10));
    if (*stop != '\0')
        return false;
    rest.remove_prefix(end + 1);
    return true;
}

bool decodeBox(std::string_view record, BoxText& box)
{
    for (int* field : {&box.number, &box.box.x, &box.box.y, &box.box.width, &box.box.height, &box.confidence})
        if (!takeNumber(record, ',', *field))
            return false;
    box.text.assign(record.begin(), record.end());
    return true;
}

// Reads the places of the box that came last.
void decodeSpans(std::string_view record, BoxText& box)
{
    int number = 0;
    if (!takeNumber(record, ',', number) || number != box.number)
        return;
    SymbolSpan span;
    while (takeNumber(record, ' ', span.left) && takeNumber(record, ',', span.right))
        box.symbols.push_back(span);
    if (!record.empty() || box.symbols.size() != codePoints(box.text))
        box.symbols.clear();
}

} // namespace

std::size_t codePoints(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string encodeRecord(const BoxText& box)
{
    std::string record;
    for (const int field : {box.number, box.box.x, box.box.y, box.box.width, box.box.height, box.confidence})
        record += std::to_string(field) + ',';
    record += box.text;
    record.erase(std::remove(record.begin(), record.end(), kRecordEnd), record.end());
    record += kRecordEnd;
    if (box.symbols.empty())
        return record;
    record += kSpansMark + std::to_string(box.number) + ',';
    for (const SymbolSpan& span : box.symbols)
        record += std::to_string(span.left) + ' ' + std::to_string(span.right) + ',';
    return record + kRecordEnd;
}

void decodeRecords(const std::string& bytes, std::vector<BoxText>& boxes)
{
    std::string_view rest(bytes);
    bool hasBox = false;
    for (std::size_t end; (end = rest.find(kRecordEnd)) != std::string_view::npos;
         rest.remove_prefix(end + 1)) {
        const std::string_view record = rest.substr(0, end);
        BoxText box;
        if (record.rfind(kSpansMark, 0) == 0) {
            if (hasBox)
                decodeSpans(record.substr(sizeof(kSpansMark) - 1), boxes.back());
        } else if ((hasBox = decodeBox(record, box))) {
            boxes.push_back(std::move(box));
        }
    }
}
