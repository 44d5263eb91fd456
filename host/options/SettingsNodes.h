#pragma once

#include <vector>

#include "host/contract/IApplication.h"
#include "host/contract/ISettingsExtender.h"

namespace kk {

inline constexpr TGuid cSettingsNodeIdGeneral =
    GuidLiteral("{61D0C2A7-48F5-4E3B-9B86-07AF5D13E9C4}");
/// The page before which plug-ins put theirs.
inline constexpr TGuid cSettingsNodeIdEmail = cSettingsNodeIdPluginsBefore;
inline constexpr TGuid cSettingsNodeIdSms = GuidLiteral("{B58E71F3-2C04-4D6A-A9F1-93D7E06C1B52}");
inline constexpr TGuid cSettingsNodeIdCalendar =
    GuidLiteral("{F4A39D06-71BE-4C58-8E2D-1D60B5A7C983}");
inline constexpr TGuid cSettingsNodeIdNotification =
    GuidLiteral("{2B97E84C-D51F-4360-BC0A-6E38F1D4A075}");

/// New pages of the host's own, in their order. iApplication may be absent; see TfrmOptions. Main
/// thread.
std::vector<TIntf<ISettingsNode>> HostSettingsNodes(const TIntf<IApplication>& iApplication);

/// The host's pages with those of plug-ins among them, each before the page that its extender
/// names, which may be another plug-in's; where several name the same one, by their sort orders,
/// and then in the order of the extenders. A page whose neighbour is not there stands at the end.
/// An extender or a page that raises is left out. Main thread.
std::vector<TIntf<ISettingsNode>> OrderedSettingsNodes(
    std::vector<TIntf<ISettingsNode>> iHost,
    const std::vector<TIntf<ISettingsExtender>>& iExtenders);

}  // namespace kk
