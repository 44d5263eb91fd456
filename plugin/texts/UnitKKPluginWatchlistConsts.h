#pragma once

#include <array>

#include "host/base/TGuid.h"

/// The fixed ids, names and numbers of the watch list: what other plug-ins, files and resources
/// know it by. None of them may change, because files and settings hold them.
namespace kk {

// The plug-in and its button in the toolbar.
inline constexpr TGuid cPluginId = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
inline constexpr TGuid cToolbuttonId = GuidLiteral("{F60DE029-576E-4EB6-996F-C2EE4F8B6153}");
inline constexpr int cToolbuttonSortOrder = 100;
inline constexpr TStringView cToolbuttonImageResourceName = u"WATCHLISTTOOLBARBUTTONIMAGE";
inline constexpr TStringView cToolbuttonImageSelectedResourceName =
    u"WATCHLISTTOOLBARBUTTONIMAGESELECTED";

/// The shopping cart gets the extensions of a view although it holds no items here.
inline constexpr TGuid cShoppingCartPluginId =
    GuidLiteral("{43520290-C2D2-49A8-BDCB-162887C7B72C}");

// The parameters of the command line, found without regard to case.
inline constexpr TStringView cCmdParamAdd = u"-rem";
inline constexpr TStringView cCmdParamImportFromFile = u"-remimport";

// The link in the explorer bar of other plug-ins' views.
inline constexpr TGuid cExplorerbarPanelMoreId =
    GuidLiteral("{16CBDEC1-2DC8-40BC-85C2-DDADECDA881A}");
inline constexpr TGuid cExplorerbarItemAddId =
    GuidLiteral("{34E81B20-26DC-4AAC-8FB1-F15FA5625A2A}");
inline constexpr int cExplorerbarItemAddSortOrder = 70;
inline constexpr TStringView cExplorerbandBarBitmap = u"EXPLORERBANDBARICO";

// The columns in result views: those of the section's own lists, and the one in the views of other
// plug-ins with its images.
inline constexpr TGuid cColumnIDReminder = GuidLiteral("{2C02CA49-B3D5-4E45-8926-78BAD9DBAA6C}");
inline constexpr TGuid cColumnIDDateOffer = GuidLiteral("{1438EDE5-EAB5-4281-A6AC-B1CD1B3F272D}");
inline constexpr TGuid cColumnIDWatchlist = GuidLiteral("{28FFB6E5-7834-4533-A3D3-E849098C2203}");
inline constexpr TStringView cColumnImageUnknown = u"ADDITIONALCOLUMNUNKNOWN";
inline constexpr TStringView cColumnImageNo = u"ADDITIONALCOLUMNNO";
inline constexpr TStringView cColumnImageYes = u"ADDITIONALCOLUMNYES";

// The watch list file: its version and the names of its entries.
inline constexpr TStringView cWatchlistFileName = u"watchlist.dat";
inline constexpr int cWatchlistFileVersion = 2;
inline constexpr TStringView cStreamVersion = u"version";
inline constexpr TStringView cStreamRemind = u"remind";
inline constexpr TStringView cStreamCategories = u"categories";
/// The source's id as text follows directly.
inline constexpr TStringView cStreamItemsPrefix = u"items";

/// Between the lines of a description and the kinds of a reminder; there is no escape for it.
inline constexpr char16_t cNodeListDelimiter = u'|';

// The category document.
inline constexpr TStringView cNodeCategoryRoot = u"CategoryRoot";
inline constexpr TStringView cNodeCategoryCategories = u"Categories";
inline constexpr TStringView cNodeCategoryCategory = u"Category";
inline constexpr TStringView cNodeCategoryId = u"Id";
inline constexpr TStringView cNodeCategoryName = u"Name";
inline constexpr TStringView cNodeCategoryDescription = u"Description";
inline constexpr TStringView cNodeCategoryExpanded = u"Expanded";

// The item document; the first two serve the reminders as well.
inline constexpr TStringView cNodeItemItems = u"Items";
inline constexpr TStringView cNodeItemItem = u"Item";
inline constexpr TStringView cNodeItemCategory = u"Category";
inline constexpr TStringView cNodeItemSearchResult = u"SearchResult";
inline constexpr TStringView cNodeItemLastUpdateDate = u"LastUpdateDate";
inline constexpr TStringView cNodeItemDescription = u"Description";

// The reminder document.
inline constexpr TStringView cNodeRemindItemId = u"Id";
inline constexpr TStringView cNodeRemindItemTime = u"Time";
inline constexpr TStringView cNodeRemindItemTypes = u"Types";
inline constexpr TStringView cNodeRemindItemDetails = u"Details";
inline constexpr TStringView cNodeRemindItemDetailsSound = u"Sound";
inline constexpr TStringView cNodeRemindItemDetailsSoundfile = u"SoundFile";
inline constexpr TStringView cNodeRemindItemDetailsWindow = u"Window";
inline constexpr TStringView cNodeRemindItemDetailsSMS = u"SMS";
inline constexpr TStringView cNodeRemindItemDetailsEMail = u"EMail";
inline constexpr TStringView cNodeRemindItemDetailsOutlook = u"Outlook";
inline constexpr TStringView cNodeRemindItemDetailsCaption = u"Caption";
inline constexpr TStringView cNodeRemindItemDetailsText = u"Text";
inline constexpr TStringView cNodeRemindItemDetailsLink = u"Link";
// Looks like a slip of the pen and is required: files hold the element under this very name.
inline constexpr TStringView cNodeRemindItemDetailsEntryID = u"EnryID";

// The kinds of reminders, in the order of TRemindType: names of images in the resources, and the
// place of each kind in the editor's list.
inline constexpr TStringView cRemindImageSound = u"REMINDIMAGESOUND";
inline constexpr TStringView cRemindImageWindow = u"REMINDIMAGEWINDOW";
inline constexpr TStringView cRemindImageSMS = u"REMINDIMAGESMS";
inline constexpr TStringView cRemindImageOutlook = u"REMINDIMAGEOUTLOOK";
inline constexpr TStringView cRemindImageEMail = u"REMINDIMAGEEMAIL";
inline constexpr std::array<TStringView, 5> cRemindImages = {
    cRemindImageSound, cRemindImageWindow, cRemindImageSMS, cRemindImageOutlook, cRemindImageEMail};
inline constexpr std::array<int, 5> cRemindTypeEditorIndex = {0, 1, 4, 3, 2};

/// The minutes before the end of the auction of the editor's list of times. Settings hold the
/// places in it.
inline constexpr std::array<int, 14> cRemindTimeRelativeMinutes = {
    1, 2, 5, 10, 15, 30, 60, 120, 180, 240, 300, 360, 720, 1440};

// The close button of a reminder's pop-up window, and the same with the pointer on it.
inline constexpr TStringView cNotificationImageClose = u"NOTIFICATIONCLOSE";
inline constexpr TStringView cNotificationImageCloseOver = u"NOTIFICATIONCLOSEOVER";

// The folders of the category tree.
inline constexpr TStringView cCategoryImageClosed = u"CATEGORYCLOSED";
inline constexpr TStringView cCategoryImageOpen = u"CATEGORYOPEN";

// The settings.
inline constexpr TStringView cSettingsSectionWatchlist = u"Watchlist";
inline constexpr TStringView cDefaultSoundFileName = u"remind.wav";

/// The message by which the wait window starts its work from within its own modal loop.
inline constexpr int cUserMessageGoOn = 0x500;

}  // namespace kk
