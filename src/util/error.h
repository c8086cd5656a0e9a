#pragma once

#include <concepts>
#include <exception>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace orrery::util {

/// The data behind an error message. Either may be empty.
struct ErrorDetails {
    std::string subject; ///< path, sheet, cell: what it is about
    std::string cause;   ///< the underlying reason, worded by whoever reported it
};

/// An enumeration of errors. `Sentence` in its namespace gives the message for each value: what is
/// wrong, where, and what to do.
template <typename Kind>
concept ErrorKinds = std::is_enum_v<Kind> && requires(Kind kind, const ErrorDetails& details)
{
    {
        Sentence(kind, details)
        } -> std::same_as<std::string>;
};

/// An error kind of any layer: a value of that layer's enumeration.
class AnyErrorKind {
public:
    template <ErrorKinds Kind>
    AnyErrorKind(Kind kind)
        : type_(&typeid(Kind)), value_(static_cast<int>(kind)),
          sentence_([](int value, const ErrorDetails& details) {
              return Sentence(static_cast<Kind>(value), details);
          })
    {
    }

    /// The message for the user.
    std::string SentenceFor(const ErrorDetails& details) const
    {
        return sentence_(value_, details);
    }
    int Value() const { return value_; }

    friend bool operator==(const AnyErrorKind& a, const AnyErrorKind& b)
    {
        return *a.type_ == *b.type_ && a.value_ == b.value_;
    }

private:
    const std::type_info* type_;
    int value_;
    std::string (*sentence_)(int value, const ErrorDetails& details);
};

/// What can go wrong with numbers, files and the system's shell.
enum class ErrorKind {
    // numbers and tables
    Overflow,   ///< a result does not fit its width
    OutOfRange, ///< an index beyond its table
    NotNumeric, ///< a text that should be a number
    // files; the subject is the path
    FileNotFound,
    FileNotReadable,
    FileNotWritable,
    NotARegularFile,  ///< a folder, a device, a pipe; the cause says which
    TextFileTooLarge, ///< beyond the size limit for text files
    FolderNotCreated,
    DiskFull,
    FileSizeLimit, ///< the system's limit on the user's file sizes
    ShellFailure,  ///< the cause is the `ShellErrorMessage`
};

std::string Sentence(ErrorKind kind, const ErrorDetails& details);

/// The base of everything that the program throws: data, not prose. Only `ErrorText` turns it into
/// a message.
class Error : public std::exception {
public:
    explicit Error(AnyErrorKind kind, std::string subject = {}, std::string cause = {});

    AnyErrorKind Kind() const noexcept { return kind_; }
    const std::string& Subject() const noexcept { return details_.subject; }
    const std::string& Cause() const noexcept { return details_.cause; }
    const char* what() const noexcept override
    {
        return what_.c_str();
    } ///< for logs, not for users

private:
    AnyErrorKind kind_;
    ErrorDetails details_;
    std::string what_;
};

/// A result that does not fit its width.
class OverflowError : public Error {
public:
    OverflowError() : Error(ErrorKind::Overflow) {}
};

/// An index beyond its table.
class OutOfRangeError : public Error {
public:
    OutOfRangeError() : Error(ErrorKind::OutOfRange) {}
};

} // namespace orrery::util

namespace orrery {
using util::Error;
}
