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

// The data streams that the host moves between installations.
inline constexpr TGuid cDataStreamID = GuidLiteral("{CAB78E2F-A46D-4807-9305-55F78AFA0850}");
inline constexpr TGuid cDataStreamIDMobile = GuidLiteral("{59564D87-BBFC-43DA-9B59-FAE17C0BF390}");

// The document for the program on the telephone.
inline constexpr int cMobileVersion = 1;
inline constexpr TStringView cMobileDateFormat = u"yyyy-mm-dd hh:nn:ss";
inline constexpr TStringView cNodeMobileWatchlist = u"watchlist";
inline constexpr TStringView cNodeMobileVersion = u"version";
inline constexpr TStringView cNodeMobileCategories = u"categories";
inline constexpr TStringView cNodeMobileCategory = u"category";
inline constexpr TStringView cNodeMobileGuid = u"guid";
inline constexpr TStringView cNodeMobileName = u"name";
inline constexpr TStringView cNodeMobileSearchResults = u"searchresults";
inline constexpr TStringView cNodeMobileSearchResult = u"searchresult";
inline constexpr TStringView cNodeMobilePluginGuid = u"pluginguid";
inline constexpr TStringView cNodeMobileCategoryGuid = u"categoryguid";
inline constexpr TStringView cNodeMobileOfferDate = u"offerdateutc";

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

// The explorer bar of the section: its panels, their items, and the images of its links. The high
// sort orders keep the items at the bottom, below what other plug-ins add.
inline constexpr TGuid cExplorerBarPanelDetailsId =
    GuidLiteral("{22C5DCB5-E0A4-45AC-A4EE-3D2600BCE4F5}");
inline constexpr int cExplorerBarPanelDetailsSortOrder = 200;
inline constexpr int cExplorerBarPanelMoreSortOrder = 300;
inline constexpr TGuid cExplorerBarPanelMoreConstId =
    GuidLiteral("{0109B8B3-2660-4595-8119-4B976BA485D4}");
inline constexpr int cExplorerBarPanelMoreConstSortOrder = 2147483646;
inline constexpr TGuid cWatchlistExplorerbarItemDetailsUpdateSeparatorId =
    GuidLiteral("{4BFE66BD-782F-4540-A4CF-4885E6087B34}");
inline constexpr int cWatchlistExplorerbarItemDetailsUpdateSeparatorSortOrder = 1000000;
inline constexpr TGuid cWatchlistExplorerbarItemDetailsDescriptionTitleId =
    GuidLiteral("{970AED29-189C-4312-A477-8C62C66948B8}");
inline constexpr int cWatchlistExplorerbarItemDetailsDescriptionTitleSortOrder = 1000010;
inline constexpr TGuid cWatchlistExplorerbarItemDetailsDescriptionTextId =
    GuidLiteral("{AB7E10DE-8DF3-47F5-8C87-1E494D2D0934}");
inline constexpr int cWatchlistExplorerbarItemDetailsDescriptionTextSortOrder = 1000011;
inline constexpr TGuid cWatchlistExplorerbarItemDetailsUpdateSeparator2Id =
    GuidLiteral("{3C4A9FDA-D01F-410B-B884-D77E0925468C}");
inline constexpr int cWatchlistExplorerbarItemDetailsUpdateSeparator2SortOrder = 1000020;
inline constexpr TGuid cWatchlistExplorerbarItemDetailsUpdateDateTimeId =
    GuidLiteral("{23D81F49-5837-4549-B8E1-F40E18557437}");
inline constexpr int cWatchlistExplorerbarItemDetailsUpdateDateTimeSortOrder = 1000030;
inline constexpr TGuid cWatchlistExplorerbarItemDetailsUpdateId =
    GuidLiteral("{B7BBD969-9757-47B9-B103-8D8A939ADE47}");
inline constexpr int cWatchlistExplorerbarItemDetailsUpdateSortOrder = 1000035;
inline constexpr TGuid cWatchlistExplorerbarItemDetailsUpdateNotIfFinishedId =
    GuidLiteral("{D30FD997-F011-46F0-BA67-5FFBEDF4D179}");
inline constexpr int cWatchlistExplorerbarItemDetailsUpdateNotIfFinishedSortOrder = 1000036;
inline constexpr TGuid cWatchlistExplorerbarItemMoreSeparatorId =
    GuidLiteral("{5783E281-7519-49C3-A440-FDA0F9D8646A}");
inline constexpr int cWatchlistExplorerbarItemMoreSeparatorSortOrder = 2147483547;
inline constexpr TGuid cWatchlistExplorerbarItemMoreExportId =
    GuidLiteral("{AC8B5A5B-177F-4A4A-808E-FF633DDB9EFC}");
inline constexpr int cWatchlistExplorerbarItemMoreExportSortOrder = 2147483548;
inline constexpr TGuid cWatchlistExplorerbarItemMoreImportId =
    GuidLiteral("{011B9F2B-B9F7-4246-89FE-3DEEA37681C9}");
inline constexpr int cWatchlistExplorerbarItemMoreImportSortOrder = 2147483549;
inline constexpr TGuid cWatchlistExplorerbarItemMorePrintId =
    GuidLiteral("{D59DF0F0-33DE-48EF-9592-12A426E17D2D}");
inline constexpr int cWatchlistExplorerbarItemMorePrintSortOrder = 2147483550;
inline constexpr TGuid cWatchlistExplorerbarItemMoreDisclaimerSeparatorId =
    GuidLiteral("{2CAD801B-900F-469B-B59E-DF2CD5A58F01}");
inline constexpr int cWatchlistExplorerbarItemMoreDisclaimerSeparatorSortOrder = 2147483551;
inline constexpr TGuid cWatchlistExplorerbarItemMoreDisclaimerId =
    GuidLiteral("{745997CA-A4F3-4A26-8CAF-82A74FAA15D7}");
inline constexpr int cWatchlistExplorerbarItemMoreDisclaimerSortOrder = 2147483552;
inline constexpr TStringView cExplorerbandbarBitmapRefresh = u"EXPLORERBANDBARICO_REFRESH";
inline constexpr TStringView cExplorerbandbarBitmapEdit = u"EXPLORERBANDBARICO_EDIT";
inline constexpr TStringView cExplorerbandbarBitmapAdd = u"EXPLORERBANDBARICO_ADD";
inline constexpr TStringView cExplorerbandbarBitmapDelete = u"EXPLORERBANDBARICO_DELETE";
inline constexpr TStringView cExplorerbandbarBitmapExport = u"EXPLORERBANDBARICO_EXPORTDATA";
inline constexpr TStringView cExplorerbandbarBitmapImport = u"EXPLORERBANDBARICO_IMPORTDATA";
inline constexpr TStringView cExplorerbandbarBitmapPrint = u"EXPLORERBANDBARICO_PRINTDATA";

// The settings.
inline constexpr TStringView cSettingsSectionWatchlist = u"Watchlist";
inline constexpr TStringView cDefaultSoundFileName = u"remind.wav";
inline constexpr TGuid cWatchlistSettingsNodeId =
    GuidLiteral("{4039E44B-70D4-41D3-86E6-C8CB02CD59FA}");

/// The message by which the wait window starts its work from within its own modal loop.
inline constexpr int cUserMessageGoOn = 0x500;

}  // namespace kk
