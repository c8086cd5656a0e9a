#pragma once

#include "util/error_report.h"

#include <memory>
#include <string>
#include <string_view>

namespace orrery::util {

/// The message for a shell result [0:32]; results without a message of their own get a general one.
std::string ShellErrorMessage(int result);

/// Opens a document or a web address with the program that the desktop has for it. Throws
/// Error(ShellFailure) with the `ShellErrorMessage` as its cause.
void ShellExecute(const std::string& file, const std::string& parameters,
                  const std::string& directory, const std::string& verb);

/// A program that was asked to open a document. It runs on when this object is gone.
class ShellOpening {
public:
    virtual ~ShellOpening() = default;
    /// Whether the program has ended, without waiting for it. Throws Error as `ShellExecute` if it
    /// failed.
    virtual bool HasEnded() = 0;
};

/// `ShellExecute` with the verb "open", without waiting for the desktop: what fails is told by the
/// result. Null if there is nothing to wait for; ask the result from time to time until it has
/// ended. Throws as `ShellExecute` for what is known at once.
std::unique_ptr<ShellOpening> StartShellOpen(const std::string& file);

/// `ShellExecute` with the verb "open"; reports a failure. True on success.
bool ShellOpen(const std::string& file, ErrorReporter& reporter);

} // namespace orrery::util
