#pragma once

#include "host/contract/IPlugin.h"

namespace kk {

inline constexpr TGuid cPagePluginId = GuidLiteral("{8B7F2D64-3E95-4C0A-A1B8-52E6D9047C31}");
/// The kind of plug-ins that are sources.
inline constexpr TGroupIdentification cPagePluginGroup{1};

/// The watch list's plug-in, which is offered this source.
inline constexpr TGuid cWatchlistPluginId = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");

inline constexpr char16_t cPageImage[] = u"SOURCE_PAGE";
inline constexpr char16_t cPageImageSelected[] = u"SOURCE_PAGE_SELECTED";

}  // namespace kk
