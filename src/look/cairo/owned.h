#pragma once

#include <cairo.h>
#include <memory>

namespace orrery::look {

struct CairoDeleter {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
/// The owner of an object of Cairo.
template <typename T> using CairoOwned = std::unique_ptr<T, CairoDeleter>;

} // namespace orrery::look
