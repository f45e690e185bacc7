// Compile-time switches of the library, set by the build (CMake option QM_ENABLE_DEBUG_LOG).

#ifndef QMCORE_PLATFORM_BUILDCONFIG_HPP_
#define QMCORE_PLATFORM_BUILDCONFIG_HPP_

namespace qm {

// True in debug builds: debug log lines are built and written. False in release builds,
// where log calls compile to nothing, including the building of their texts.
inline constexpr bool kQMEnableDebugLog = QM_ENABLE_DEBUG_LOG != 0;

}  // namespace qm

#endif  // QMCORE_PLATFORM_BUILDCONFIG_HPP_
