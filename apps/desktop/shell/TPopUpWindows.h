#pragma once

#include <QRect>
#include <memory>
#include <vector>

#include "apps/desktop/skin/TSkin.h"
#include "host/controls/TForm.h"
#include "host/controls/TfrmKKCommonNotifier.h"

class QFrame;

namespace kk {

/// The small windows that come up in the lower right corner of the work area, several above each
/// other: without a frame, in front of other windows, and never with the focus. Each is freed in a
/// later turn of the loop once it has closed. Their code may lie in packages: Clear comes before
/// those are unloaded. Main thread.
class TPopUpWindows : public TObject {
 public:
  TPopUpWindows() = default;
  ~TPopUpWindows() override;

  /// Takes the form over and shows it. If it raises, the form is still the caller's. A form that is
  /// no TfrmMSNPopUpBase stays until it closes itself.
  void Take(TForm& ioForm);
  /// Shows it in a window of this program; one of the same id goes before.
  void Show(const TNotification& iNotification);
  /// Frees all, whether closed or not.
  void Clear() { FPopUps.clear(); }

  /// Those that stand on the screen.
  std::vector<const QWidget*> Windows() const;

  /// Where the windows of these sizes stand in the area, each above the one before, and beside it
  /// where there is no more room above. What has no room at all begins anew in the corner.
  static std::vector<QPoint> Places(const QRect& iArea, const std::vector<QSize>& iSizes);

 private:
  struct TPopUp {
    std::unique_ptr<QFrame> Window;
    std::unique_ptr<TForm> Form;
    std::unique_ptr<TSkin> Skin;
    bool IsClosed = false;
    ~TPopUp();
  };
  void Add(TForm& ioForm);
  void Arrange();
  void FreeClosed();
  void DoClose(TObject* Sender);

  std::vector<std::unique_ptr<TPopUp>> FPopUps;
  const std::shared_ptr<int> FAlive = std::make_shared<int>();
};

}  // namespace kk
