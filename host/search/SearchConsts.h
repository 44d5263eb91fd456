#pragma once

#include "host/base/TGuid.h"
#include "host/base/TString.h"

namespace kk {

/// The id by which the host's main menu knows the section "Suchen", and its toolbar the button.
inline constexpr TGuid cMainMenuFormIDSearch =
    GuidLiteral("{5A0C7D34-9E61-4B2F-A7D8-63C1F40B9E25}");
/// In whose name the host's own section stands among those of plug-ins.
inline constexpr TGuid cSearchPluginId = GuidLiteral("{C71E5B90-3D28-4F6A-8B14-2E97A05D63F8}");

inline constexpr TGuid cToolbuttonSearchId = GuidLiteral("{0E84A6F1-7C3B-4D95-9A20-D51B68C7F34E}");
inline constexpr int cToolbuttonSearchSortOrder = 10;
inline constexpr TStringView cToolbuttonSearchImage = u"SEARCHTOOLBARBUTTONIMAGE";
inline constexpr TStringView cToolbuttonSearchImageSelected = u"SEARCHTOOLBARBUTTONIMAGESELECTED";

/// The line of that panel that says what to do.
inline constexpr TGuid cSearchItemMoreHintId =
    GuidLiteral("{8F3D2C60-51AE-4B97-9D04-76E2B1C85A3F}");
/// The panel "Weitere Optionen", the same in every result view, into which extenders put links.
inline constexpr TGuid cSearchPanelMoreId = GuidLiteral("{16CBDEC1-2DC8-40BC-85C2-DDADECDA881A}");

}  // namespace kk
