#pragma once

#include "host/base/IInterface.h"

namespace kk {

class TControl;
class TPanel;

/// The host's page before which plug-ins put theirs.
inline constexpr TGuid cSettingsNodeIdPluginsBefore =
    GuidLiteral("{2D7E61B8-0F35-4C9A-B1D4-58A6E3C07F12}");

/// A page of the settings dialog. The dialog puts the frame into its place, loads the page before
/// it is seen, validates all pages before it saves the first one, and takes the frame out again at
/// its end. Main thread.
class ISettingsNode : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{7603D823-80B1-4892-8D5C-DF09938691C7}");

  virtual TGuid GetId() const = 0;
  virtual TString GetCaption() const = 0;
  /// Among pages that stand before the same one, from the lowest number to the highest.
  virtual int GetSortOrder() const = 0;
  /// Whether what the user has entered can be saved. If not, oMessage says in German why, and
  /// oControl is where to mend it, null for nowhere in particular; both are empty otherwise.
  virtual bool ValidateSettings(TString& oMessage, TControl*& oControl) = 0;
  /// Every page of the dialog has been saved.
  virtual void SettingsChanged() = 0;
  /// Shows the settings as they are stored.
  virtual void LoadSettings() = 0;
  virtual void SaveSettings() = 0;
  /// What the user sees of the page; it stays the page's.
  virtual TPanel& GetFrame() = 0;
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
