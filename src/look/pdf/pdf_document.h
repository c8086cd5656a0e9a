#pragma once

#include "look/canvas/canvas.h"

#include <string_view>

/// The interface between the program and the library that writes PDF files. Both are built
/// together; no exception passes between them, and each frees what it made.
namespace orrery::look {

/// A PDF file that is made page by page. What fails is told at the end.
class PdfDocument {
public:
    virtual ~PdfDocument() = default;
    /// Begins a page of that size, in pixels at 96 dpi. Its canvas is valid until the next page
    /// begins, or the file ends.
    virtual Canvas& BeginPage(double width, double height) = 0;
    /// Ends the file. Its bytes, valid as long as the document; empty if it could not be made.
    virtual std::string_view Finish() = 0;
};

/// The exported function that makes a document with a title, and its type. The caller deletes the
/// document.
inline constexpr const char* kPdfFunction = "OrreryPdfDocument";
using PdfFunction = PdfDocument* (*)(const char* title);

} // namespace orrery::look
