#include "util/error_text.h"

#include "util/error.h"
#include "util/paths.h"
#include "util/sentence.h"
#include "util/system_message.h"

#include <filesystem>
#include <new>

namespace orrery::util {

namespace {

std::string FileSentence(ErrorKind kind, const ErrorDetails& details)
{
    const std::string path = QuotedOr(details.subject, "A file");
    switch (kind) {
    case ErrorKind::FileNotFound:
        return path + " was not found. Check the name and the folder.";
    case ErrorKind::FileNotReadable:
        return path + " cannot be read" + Because(details) +
               ". Close it in other programs and check its permissions.";
    case ErrorKind::FileNotWritable:
        return path + " cannot be written" + Because(details) +
               ". Close it in other programs and check the permissions of the file and its folder.";
    case ErrorKind::NotARegularFile:
        return path + " is not a regular file" + Because(details) +
               ". Only regular files are read and replaced: use another name, or put a file "
               "in its place.";
    case ErrorKind::TextFileTooLarge:
        return path +
               " is larger than 16 MiB, which no text file of this program is. Check that it "
               "is the right file.";
    case ErrorKind::FolderNotCreated:
        return "The folder " + Quoted(details.subject) + " cannot be created" + Because(details) +
               ". Check the permissions of the folder above it.";
    case ErrorKind::DiskFull:
        return path + " was not written because the disk is full. Make room and try again.";
    case ErrorKind::FileSizeLimit:
        return path + " was not written because it would pass the limit on the size of files that "
                      "is set for you. Raise the limit (ulimit -f) and try again.";
    default:
        return {};
    }
}

} // namespace

std::string Sentence(ErrorKind kind, const ErrorDetails& details)
{
    switch (kind) {
    case ErrorKind::Overflow:
        return details.subject.empty() ? "Overflow: a number is too large for its place."
                                       : "Overflow: " + Quoted(details.subject) +
                                             " leads to a number that is too large for its place.";
    case ErrorKind::OutOfRange:
        return "Out of range: an entry beyond the end of a list was asked for.";
    case ErrorKind::NotNumeric:
        return Quoted(details.subject) + " is not a number. Write digits only.";
    case ErrorKind::ShellFailure:
        return details.cause;
    default:
        return FileSentence(kind, details);
    }
}

std::string ErrorText(const std::exception& error)
{
    if (const auto* own = dynamic_cast<const Error*>(&error))
        return own->Kind().SentenceFor({Printable(own->Subject()), own->Cause()});
    if (const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&error))
        return QuotedOr(FromPath(file->path1()), "The current folder") +
               " cannot be used: " + SystemMessage(file->code()) + '.';
    if (dynamic_cast<const std::bad_alloc*>(&error))
        return "Out of memory. Close other programs and try again.";
    return error.what();
}

} // namespace orrery::util
