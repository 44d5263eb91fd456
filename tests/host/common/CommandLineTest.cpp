#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "host/base/Exception.h"
#include "host/common/TCmdParams.h"
#include "host/common/TVersionHelper.h"

namespace kk {
namespace {

using TPairs = std::vector<std::pair<TString, TString>>;

TPairs Params(TStringView iLine) {
  const TCmdParams params(iLine);
  TPairs pairs;
  for (int i = 0; i < params.Count(); ++i) {
    pairs.emplace_back(params.GetName(i), params.GetValue(i));
  }
  return pairs;
}

TEST(TVersionHelper, ReplacesTheVersionAndLeavesAllElse) {
  EXPECT_EQ(TVersionHelper::ReplaceVersionParams(u"Kaufkobolde %MV%SV"), u"Kaufkobolde 7.0");
  EXPECT_EQ(TVersionHelper::ReplaceVersionParams(u"%SV %mv %s %% %M V %MV %MV"),
            u".0 %mv %s %% %M V 7 7");
  EXPECT_EQ(TVersionHelper::ReplaceVersionParams(u""), u"");
}

TEST(TCmdParams, ALineWithoutParametersHasNone) {
  EXPECT_EQ(Params(u""), TPairs());
  EXPECT_EQ(Params(u"  "), TPairs());
  EXPECT_EQ(Params(u"/usr/bin/kaufkobolde file"), TPairs());
  EXPECT_EQ(Params(u"kaufkobolde -"), TPairs());
}

TEST(TCmdParams, AValueIsWhatFollowsUpToTheNextName) {
  EXPECT_EQ(Params(u"kaufkobolde -rem  page:1 2 -REMIMPORT\t/a.wch -tray"),
            (TPairs{{u"-rem", u"page:1 2"}, {u"-REMIMPORT", u"/a.wch"}, {u"-tray", u""}}));
}

TEST(TCmdParams, QuotesKeepBlanksTogetherAndAreNoNames) {
  EXPECT_EQ(Params(u"-remimport \"/home/a  b/-x.wch\" -rem \"-5\" \"-rem\""),
            (TPairs{{u"-remimport", u"/home/a  b/-x.wch"}, {u"-rem", u"-5 -rem"}}));
}

TEST(TCmdParams, AQuoteStandsDoubledOrBehindABackslash) {
  EXPECT_EQ(Params(u"-a \"x\"\"y\" -b \"x\\\"y\" -c \"C:\\dir\\\\\" -d \\x\\"),
            (TPairs{{u"-a", u"x\"y"}, {u"-b", u"x\"y"}, {u"-c", u"C:\\dir\\"}, {u"-d", u"\\x\\"}}));
}

TEST(TCmdParams, QuotesCanStandInTheMiddleOfAnArgument) {
  EXPECT_EQ(Params(u"-file=\"a b\"c"), (TPairs{{u"-file=a bc", u""}}));
}

TEST(TCmdParams, AQuoteThatIsNotClosedReachesToTheEnd) {
  EXPECT_EQ(Params(u"-a \"x -b y"), (TPairs{{u"-a", u"x -b y"}}));
  EXPECT_EQ(Params(u"-a \""), (TPairs{{u"-a", u""}}));
  EXPECT_EQ(Params(u"-a \"x\\"), (TPairs{{u"-a", u"x\\"}}));
}

TEST(TCmdParams, EmptyArgumentsAreArguments) {
  EXPECT_EQ(Params(u"-a \"\" b"), (TPairs{{u"-a", u" b"}}));
}

TEST(TCmdParams, AnIndexOutOfRangeRaises) {
  const TCmdParams params(u"-a b");
  EXPECT_THROW(params.GetName(1), EListError);
  EXPECT_THROW(params.GetValue(-1), EListError);
}

TEST(TCmdParams, JoinLeavesPlainArgumentsAsTheyAre) {
  EXPECT_EQ(TCmdParams::Join({u"kaufkobolde", u"-remimport", u"/a b.wch", u"", u"ä"}),
            u"kaufkobolde -remimport \"/a b.wch\" \"\" ä");
  EXPECT_EQ(TCmdParams::Quote(u"-5"), u"\"-5\"");
  EXPECT_EQ(TCmdParams::Quote(u"5"), u"5");
}

RC_GTEST_PROP(TCmdParams, AnyValueSurvivesQuoting, (const std::vector<uint16_t>& iUnits)) {
  constexpr TStringView cTroublesome = u"\" \\-\t\n='";
  TString value;
  for (const uint16_t unit : iUnits) {
    value += unit < cTroublesome.size() ? cTroublesome[unit] : static_cast<char16_t>(unit * 977u);
  }
  const TPairs expected{{u"-rem", value}, {u"-b", u"x"}};
  RC_ASSERT(Params(u"kk -rem " + TCmdParams::Quote(value) + u" -b x") == expected);
}

}  // namespace
}  // namespace kk
