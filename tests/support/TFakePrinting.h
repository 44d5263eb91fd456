#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "host/base/Exception.h"
#include "host/base/TInstalled.h"
#include "host/controls/TPrintDialog.h"

namespace kk {

/// A printer of paper that nobody sees: it records what came to it, and a script answers the print
/// dialogs. A dialog without an answer is cancelled.
class TFakePrinting : public IPrinting {
 public:
  TFakePrinting() : FInstalled(&SetPrinting, this) {}

  /// What the user does in the next print dialog; true for OK.
  using TAnswer = std::function<bool(TPrintDialog&)>;
  TFakePrinting& Expect(TAnswer iAnswer) {
    FAnswers.push_back(std::move(iAnswer));
    return *this;
  }

  std::unique_ptr<IPrintJob> CreateJob(TPrintContent iContent) override {
    Contents.push_back(std::move(iContent));
    return std::make_unique<TJob>(*this, static_cast<int>(Contents.size()));
  }
  bool ShowPrintDialog(TPrintDialog& ioDialog) override {
    Dialogs.push_back(ioDialog);
    if (FAnswers.empty()) return false;
    const TAnswer answer = std::move(FAnswers.front());
    FAnswers.pop_front();
    return answer(ioDialog);
  }

  int PageCount = 3;
  int LivingJobs = 0;
  TString PrintFailure;                 ///< what each print raises, if it is not empty
  std::vector<TPrintContent> Contents;  ///< of all jobs
  std::vector<TPrintDialog> Dialogs;    ///< as they came up
  std::vector<std::string> Printed;     ///< "1: 1-3": the job, from 1, and the pages

 private:
  class TJob : public IPrintJob {
   public:
    TJob(TFakePrinting& ioPrinting, int iNumber) : FPrinting(ioPrinting), FNumber(iNumber) {
      ++FPrinting.LivingJobs;
    }
    ~TJob() override { --FPrinting.LivingJobs; }
    int CalculatePageCount() override { return FPrinting.PageCount; }
    void Print(int iFromPage, int iToPage) override {
      if (!FPrinting.PrintFailure.empty()) throw Exception(FPrinting.PrintFailure);
      FPrinting.Printed.push_back(std::to_string(FNumber) + ": " + std::to_string(iFromPage) + "-" +
                                  std::to_string(iToPage));
    }

   private:
    TFakePrinting& FPrinting;
    int FNumber;
  };

  std::deque<TAnswer> FAnswers;
  TInstalled<IPrinting> FInstalled;
};

}  // namespace kk
