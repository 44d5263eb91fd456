#include "host/printing/TPdfPrinting.h"

#include "host/printing/PrintContentJson.h"
#include "host/printing/TPdfProcess.h"

namespace kk {

class TPdfPrinting::TJob : public IPrintJob {
 public:
  TJob(TPdfPrinting& ioPrinting, TPrintContent iContent)
      : FPrinting(ioPrinting), FContent(std::move(iContent)) {}
  int CalculatePageCount() override { return 1; }
  void Print(int /*iFromPage*/, int /*iToPage*/) override {
    FPrinting.FContents.push_back(FContent);
  }

 private:
  TPdfPrinting& FPrinting;
  const TPrintContent FContent;
};

std::unique_ptr<IPrintJob> TPdfPrinting::CreateJob(TPrintContent iContent) {
  return std::make_unique<TJob>(*this, std::move(iContent));
}

void TPdfPrinting::WriteTo(TStringView iFileName, const std::stop_token& iStop,
                           const TPdfOptions& iOptions) const {
  TPdfProcess(iOptions, ToUtf8(iFileName), PrintContentsToJson(FContents)).Wait(iStop);
}

}  // namespace kk
