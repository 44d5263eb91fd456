#pragma once

namespace kk {

inline constexpr char16_t _resPageName[] = u"Produktseiten";
inline constexpr char16_t _resPageSignature[] = u"Kaufkobolde";
inline constexpr char16_t _resPageDescription[] = u"Produktseiten";
inline constexpr char16_t _resPageLongDescription[] =
    u"Beobachtet Produkte und Auktionen auf beliebigen Webseiten von Shops und Auktionshäusern.";

inline constexpr char16_t _resPageLogSender[] = u"Produktseiten";
inline constexpr char16_t _resPageLogUpdateFailed[] =
    u"Die Seite %s konnte nicht aktualisiert werden: %s";

inline constexpr char16_t _resPageReasonGone[] = u"Die Seite gibt es nicht mehr (%d)";
inline constexpr char16_t _resPageReasonForbidden[] = u"Der Zugriff wurde verweigert (%d)";
inline constexpr char16_t _resPageReasonTooOften[] =
    u"Der Server lässt zurzeit keine Anfragen zu (%d)";
inline constexpr char16_t _resPageReasonServer[] = u"Der Server meldet einen Fehler (%d)";
inline constexpr char16_t _resPageReasonStatus[] = u"Der Server antwortet unerwartet (%d)";
inline constexpr char16_t _resPageReasonClosing[] = u"Abgebrochen";
inline constexpr char16_t _resPageReasonForeign[] = u"Der Artikel gehört nicht zu dieser Quelle";

inline constexpr char16_t _resPageColumnName[] = u"Name";
inline constexpr char16_t _resPageColumnPrice[] = u"Preis";
inline constexpr char16_t _resPageColumnAvailability[] = u"Verfügbarkeit";
inline constexpr char16_t _resPageColumnSeller[] = u"Verkäufer";
inline constexpr char16_t _resPageColumnEnd[] = u"Ende";
inline constexpr char16_t _resPageColumnAddress[] = u"Adresse";
inline constexpr char16_t _resPageColumnImage[] = u"Bild";
inline constexpr char16_t _resPageColumnChanged[] = u"Letzte Änderung";

inline constexpr char16_t _resPageOpen[] = u"Seite im Browser öffnen";
inline constexpr char16_t _resPageListEmpty[] =
    u"Hier stehen die Produktseiten, die Sie in dieser Kategorie beobachten.";
inline constexpr char16_t _resPageSearchListEmpty[] =
    u"Geben Sie Adressen von Produktseiten ein, eine je Zeile. Sie können sie auch aus dem Browser "
    u"hierher ziehen.";
inline constexpr char16_t _resPageSearchPrompt[] = u"Adressen von Produktseiten, eine je Zeile:";
inline constexpr char16_t _resPageSearchNothing[] =
    u"Geben Sie mindestens eine Adresse einer Produktseite ein.";
inline constexpr char16_t _resPageSearchNoAddress[] = u"„%s“ ist keine Adresse einer Webseite.";
inline constexpr char16_t _resPageSearchFailed[] = u"Die Seite %s konnte nicht gelesen werden: %s.";
inline constexpr char16_t _resPageSearchTooMany[] =
    u"Auf einmal werden höchstens %d Seiten gelesen, %d weitere wurden übergangen.";

inline constexpr char16_t _resPageReminderEnd[] = u"Endet am %s";
inline constexpr char16_t _resPageReminderPrice[] = u"Preis: %s";
inline constexpr char16_t _resPageReminderSeller[] = u"Verkäufer: %s";

inline constexpr char16_t _resPageStreamDamaged[] =
    u"Die gespeicherten Produktseiten sind beschädigt";

}  // namespace kk
