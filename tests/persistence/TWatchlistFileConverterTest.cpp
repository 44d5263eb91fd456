#include "persistence/TWatchlistFileConverter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

constexpr char cUnknown[] = "info WatchlistHandler: Unbekannte Watchlist-Datei-Konvertierung";

TEST(TWatchlistFileConverter, TheStepFromVersionZeroDoesNothing) {
  TLogRecorder log;
  TWatchlistFileConverter(u"/watchlist.dat").ConvertFileToCurrentVersion(1, 0);
  EXPECT_THAT(log.Lines(), testing::IsEmpty());
}

TEST(TWatchlistFileConverter, EachOtherStepIsLogged) {
  TLogRecorder log;
  TWatchlistFileConverter(u"/watchlist.dat").ConvertFileToCurrentVersion(3, 0);
  EXPECT_THAT(log.Lines(), testing::ElementsAre(cUnknown, cUnknown));
}

TEST(TWatchlistFileConverter, ForTheCurrentVersionAndNewerOnesThereIsNoStep) {
  TLogRecorder log;
  TWatchlistFileConverter converter(u"/watchlist.dat");
  converter.ConvertFileToCurrentVersion(2, 2);
  converter.ConvertFileToCurrentVersion(2, 3);
  EXPECT_THAT(log.Lines(), testing::IsEmpty());
}

}  // namespace
}  // namespace kk
