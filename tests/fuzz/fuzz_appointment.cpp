#include <cstdint>

#include "host/delivery/calendar/TAppointment.h"

// A calendar that a server sent is compared with the appointment that should be in it.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  static const kk::TAppointment appointment(u"Kaufkobolde 7.0", u"Text", u"Erinnerung an Uhr",
                                            kk::EncodeDateTime({2026, 11, 20, 18, 30, 0, 0}));
  appointment.IsIn({reinterpret_cast<const char*>(iData), iSize});
  return 0;
}
