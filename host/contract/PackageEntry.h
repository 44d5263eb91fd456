#pragma once

#include <cstdint>

namespace kk {

/// The version of the edge between host and plug-ins. It changes whenever an interface, a base type
/// or a common service changes in a way that a compiled package would notice.
inline constexpr uint32_t cInterfaceVersion = 1;

/// What a package exports, under the name of cPackageEntryName and with C linkage. The host reads
/// the version before it runs any code of the package.
struct TPackageEntry {
  uint32_t InterfaceVersion;
  /// Adds the package's plug-in to Plugins(); a second call does nothing. Main thread. It may
  /// raise.
  void (*Register)();
};

inline constexpr char cPackageEntryName[] = "KaufkoboldePackage";

/// Stands before the definition of the entry:
///   KK_PACKAGE_ENTRY {cInterfaceVersion, &RegisterMyPlugin};
#define KK_PACKAGE_ENTRY \
  extern "C" __attribute__((visibility("default"))) const ::kk::TPackageEntry KaufkoboldePackage

}  // namespace kk
