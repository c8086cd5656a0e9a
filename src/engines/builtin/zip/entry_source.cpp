#include "engines/builtin/zip/entry_source.h"

#include <algorithm>
#include <string>
#include <zip.h>

namespace orrery::zip {

/// What libzip asks of a source.
struct EntrySource::Commands {
    /// libzip's callback; must not throw.
    static zip_int64_t Serve(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        auto& source = *static_cast<EntrySource*>(state);
        switch (command) {
        case ZIP_SOURCE_SUPPORTS:
            return ZIP_SOURCE_SUPPORTS_READABLE;
        case ZIP_SOURCE_STAT:
            if (!source.isKnown_ && !source.Produce())
                return -1;
            return source.Describe(*static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_OPEN:
            source.position_ = 0;
            return source.Produce() ? 0 : -1;
        case ZIP_SOURCE_READ:
            return static_cast<zip_int64_t>(source.Read(static_cast<char*>(data), length));
        case ZIP_SOURCE_CLOSE:
            source.Discard();
            return 0;
        case ZIP_SOURCE_ERROR:
            return ReportError(data, length);
        case ZIP_SOURCE_FREE:
            return 0; // libzip does not own it
        default:
            return -1;
        }
    }

    static zip_int64_t ReportError(void* data, zip_uint64_t length)
    {
        zip_error_t error;
        zip_error_init(&error);
        zip_error_set(&error, ZIP_ER_INTERNAL, 0);
        const zip_int64_t size = zip_error_to_data(&error, data, length);
        zip_error_fini(&error);
        return size;
    }
};

zip_source* EntrySource::Create(struct zip* container)
{
    return zip_source_function(container, &Commands::Serve, this);
}

bool EntrySource::Produce()
{
    if (isProduced_)
        return true;
    try {
        EntrySink sink;
        producer_(sink);
        packed_ = sink.Finish();
        packedSize_ = packed_.bytes.size();
        isProduced_ = isKnown_ = true;
    }
    catch (...) { // given out by Failure
        failure_ = std::current_exception();
    }
    return isProduced_;
}

/// The sizes are known before anything is written: libzip writes plain entries, not zip64 ones.
std::int64_t EntrySource::Describe(struct zip_stat& stat) const
{
    zip_stat_init(&stat);
    stat.comp_method = ZIP_CM_DEFLATE;
    stat.crc = packed_.crc;
    stat.size = packed_.size;
    stat.comp_size = packedSize_;
    stat.valid = ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE;
    return sizeof stat;
}

std::size_t EntrySource::Read(char* buffer, std::size_t length)
{
    const std::size_t count = std::min(length, packed_.bytes.size() - position_);
    std::copy_n(packed_.bytes.data() + position_, count, buffer);
    position_ += count;
    return count;
}

void EntrySource::Discard()
{
    isProduced_ = false;
    std::string().swap(packed_.bytes);
}

} // namespace orrery::zip
