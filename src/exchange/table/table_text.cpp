#include "exchange/table/table_text.h"

#include "exchange/error.h"
#include "util/code_page.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <utility>

namespace orrery::exchange {
namespace {

constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

/// UTF-16 without its mark, piece by piece: the whole text a second time would need much memory.
std::string FromUtf16Bytes(std::string_view bytes, bool isBigEndian)
{
    constexpr std::size_t unitsOfPiece = 1U << 16U;
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<char16_t>(isBigEndian ? first << 8U | second : second << 8U | first);
    };
    std::string text;
    text.reserve(bytes.size() / 2 * 3);
    std::u16string piece;
    for (std::size_t at = 0; at + 1 < bytes.size();) {
        piece.clear();
        const auto isInPair = [&piece] { return (piece.back() & 0xFC00U) == 0xD800U; };
        while (at + 1 < bytes.size() && (piece.size() < unitsOfPiece || isInPair())) {
            piece += unitAt(at);
            at += 2;
        }
        text += util::FromUtf16(piece);
    }
    return text;
}

} // namespace

TableText::TableText(std::string bytes, const std::string& name) : bytes_(std::move(bytes))
{
    const std::string_view all = bytes_;
    const bool isBigEndian = all.starts_with(kBigEndianMark);
    if (isBigEndian || all.starts_with(kLittleEndianMark))
        bytes_ = FromUtf16Bytes(all.substr(kBigEndianMark.size()), isBigEndian);
    else if (all.starts_with(util::kByteOrderMark))
        bytes_.erase(0, util::kByteOrderMark.size());
    if (bytes_.find('\0') != std::string::npos)
        throw Error(ErrorKind::NotAText, name);
    isCodePage_ = !util::IsValidUtf8(bytes_);
}

std::string TableText::Decode(std::string_view part) const
{
    return isCodePage_ ? util::DecodeCodePage(part) : std::string(part);
}

TableText LoadTableText(const std::filesystem::path& path)
{
    util::InputFile file(path);
    if (file.Size() > kMostTableSize)
        throw Error(ErrorKind::FileTooLarge, util::FromPath(path));
    return {file.ReadAll(kMostTableSize), util::FromPath(path)};
}

} // namespace orrery::exchange
