#pragma once

#include <QString>
#include <string>
#include <vector>

namespace kk {

/// While it lives, what QAbstractItemModelTester finds wrong ends up in its list.
class TTesterMessages {
 public:
  TTesterMessages() {
    current = this;
    FBefore = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext& iContext, const QString& iText) {
          if (iContext.category == std::string("qt.modeltest")) current->Texts.push_back(iText);
        });
  }
  ~TTesterMessages() { qInstallMessageHandler(FBefore); }
  TTesterMessages(const TTesterMessages&) = delete;
  TTesterMessages& operator=(const TTesterMessages&) = delete;

  std::vector<QString> Texts;

 private:
  static inline TTesterMessages* current = nullptr;
  QtMessageHandler FBefore;
};

}  // namespace kk
