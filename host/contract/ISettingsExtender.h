#pragma once

#include "host/base/IInterface.h"

namespace kk {

/// The host's page before which plug-ins put theirs.
inline constexpr TGuid cSettingsNodeIdPluginsBefore =
    GuidLiteral("{2D7E61B8-0F35-4C9A-B1D4-58A6E3C07F12}");

/// A page of the settings dialog. Main thread.
class ISettingsNode : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{7603D823-80B1-4892-8D5C-DF09938691C7}");

  virtual TGuid GetId() const = 0;
  virtual TString GetCaption() const = 0;
  virtual int GetSortOrder() const = 0;
  virtual void LoadSettings() = 0;
  virtual void SaveSettings() = 0;
};

/// The pages that a plug-in brings, and where they go. Main thread.
class ISettingsExtender : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{B3FA4438-CF0B-418C-BBA5-BA5BDA205056}");

  virtual int GetCount() const = 0;
  virtual TIntf<ISettingsNode> GetNode(int iIndex) const = 0;
  /// The id of the page before which this one stands.
  virtual TGuid GetBefore(int iIndex) const = 0;
};

}  // namespace kk
