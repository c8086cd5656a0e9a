#include "util/error.h"

#include "util/sentence.h"

#include <utility>

namespace orrery::util {

namespace {

std::string LogText(const AnyErrorKind& kind, const ErrorDetails& details)
{
    std::string text = "error " + std::to_string(kind.Value());
    for (const std::string* part : {&details.subject, &details.cause}) {
        if (!part->empty())
            text += ": " + *part;
    }
    return text;
}

} // namespace

Error::Error(AnyErrorKind kind, std::string subject, std::string cause)
    : kind_(kind), details_{std::move(subject), std::move(cause)}, what_(LogText(kind_, details_))
{
}

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

} // namespace orrery::util
