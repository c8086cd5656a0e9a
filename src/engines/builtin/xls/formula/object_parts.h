#pragma once

#include <cstddef>
#include <cstdint>

/// The parts of an OBJ record that matter here, each after its type ("ft") and its size.
/// [MS-XLS] 2.4.181
namespace orrery::xls {

inline constexpr std::size_t kPartHeader = 4; ///< type and size

inline constexpr std::uint16_t kEndPart = 0x00;
inline constexpr std::uint16_t kMacroPart = 0x04;
inline constexpr std::uint16_t kPictureFlagsPart = 0x08;
inline constexpr std::uint16_t kPictureFormulaPart = 0x09;
inline constexpr std::uint16_t kLinkPart = 0x0E;      ///< of scroll bars, spinners and lists
inline constexpr std::uint16_t kListPart = 0x13;      ///< the last one; its size is wrong
inline constexpr std::uint16_t kCheckLinkPart = 0x14; ///< of check boxes and option buttons

/// fPrstm in the picture flags: the object is in the stream of controls. [MS-XLS] 2.5.151
inline constexpr unsigned kIsInControls = 0x20;
/// The token of an embedded object, in its picture formula.
inline constexpr std::uint8_t kEmbeddedToken = 0x02;

} // namespace orrery::xls
