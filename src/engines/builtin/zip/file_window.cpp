#include "engines/builtin/zip/file_window.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace orrery::zip {

void FileWindow::Open()
{
    if (file_)
        return;
    util::InputFile file(path_);
    file.CheckUnchangedSince(stamp_);
    file_ = std::move(file);
}

std::string_view FileWindow::Read(std::uint64_t offset, std::size_t count)
{
    assert(count <= kMost);
    offset = std::min(offset, Size());
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, Size() - offset));
    if (offset < begin_ || offset + count > begin_ + piece_.size()) {
        Open();
        // Small files become one piece, whichever end is read first.
        begin_ = Size() <= kMost ? 0 : offset;
        piece_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kMost, Size() - begin_)));
        file_->Seek(begin_);
        piece_.resize(file_->Read(piece_.data(), piece_.size()));
    }
    const auto at = static_cast<std::size_t>(offset - begin_);
    return std::string_view(piece_).substr(std::min(at, piece_.size()), count);
}

} // namespace orrery::zip
