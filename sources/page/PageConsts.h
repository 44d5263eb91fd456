#pragma once

#include "host/contract/IPlugin.h"

namespace kk {

inline constexpr TGuid cPagePluginId = GuidLiteral("{8B7F2D64-3E95-4C0A-A1B8-52E6D9047C31}");
/// The kind of plug-ins that are sources.
inline constexpr TGroupIdentification cPagePluginGroup{1};

/// The watch list's plug-in, which is offered this source.
inline constexpr TGuid cWatchlistPluginId = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");

/// Keys of the settings file for the layouts of its lists.
inline constexpr char16_t cPageListLayoutKey[] = u"PageWatchlist";
inline constexpr char16_t cPageSearchLayoutKey[] = u"PageSearch";

/// The columns of its lists; settings of views may hold the ids.
inline constexpr TGuid cPageColumnName = GuidLiteral("{CD3370FE-4407-4C01-8CB5-EB7B66FB26D1}");
inline constexpr TGuid cPageColumnPrice = GuidLiteral("{BE17FA1A-7FAA-4A0B-883C-0FCBBDA86DD9}");
inline constexpr TGuid cPageColumnAvailability =
    GuidLiteral("{A5989FD2-4943-4C27-B748-CE7541E5E99B}");
inline constexpr TGuid cPageColumnSeller = GuidLiteral("{FF37EDF5-99B7-4981-BBF0-CFBFC10DF4A1}");
inline constexpr TGuid cPageColumnEnd = GuidLiteral("{105B1870-40C3-410D-88AC-ECAE7F058DF4}");
inline constexpr TGuid cPageColumnChanged = GuidLiteral("{A98929D5-0FA4-4CA5-AC98-D635DDCE28E8}");
inline constexpr TGuid cPageColumnAddress = GuidLiteral("{BEFB91E0-DB5E-436D-9CC2-EB544F1D56B5}");

inline constexpr char16_t cPageImage[] = u"SOURCE_PAGE";
inline constexpr char16_t cPageImageSelected[] = u"SOURCE_PAGE_SELECTED";

}  // namespace kk
