#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/base/Exception.h"
#include "host/delivery/calendar/TCalendarFactory.h"
#include "tests/support/TDeliveryWorld.h"

namespace kk {

/// The calendar as the program has it: through the door, with the settings that a test makes.
class TCalendarTest : public testing::Test {
 protected:
  TCalendarTest() : FBefore(SetOutlookFactory(&FFactory)) {}
  ~TCalendarTest() override { SetOutlookFactory(FBefore); }

  static inline const TDateTime cStart = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});

  TString Add(TStringView iSubject = u"Kaufkobolde 7.0", TStringView iBody = u"Text",
              TStringView iLocation = u"Erinnerung an Lampe") {
    return CreateOutlook()->AddAppointment(iSubject, iBody, iLocation, 0, cStart, 1);
  }
  static bool Delete(TStringView iEntryId) { return CreateOutlook()->DeleteAppointment(iEntryId); }

  /// What an operation says when it fails.
  template <class Operation>
  static std::string FailureOf(Operation&& iOperation) {
    try {
      iOperation();
      return "(no failure)";
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
  }
  std::string AddFailure() {
    return FailureOf([this] { Add(); });
  }
  std::string DeleteFailure(TStringView iEntryId) {
    return FailureOf([&] { Delete(iEntryId); });
  }

  TDeliveryWorld FWorld;
  TCalendarFactory FFactory;

 private:
  IOutlookFactory* FBefore;
};

inline constexpr char16_t cSomeFile[] = u"01234567-89ab-cdef-0123-456789abcdef.ics";

}  // namespace kk
