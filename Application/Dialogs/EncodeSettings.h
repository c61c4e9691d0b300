#pragma once

#include <cstdint>
#include <vector>

#include "Formats/PixelEncoding.h"

class Preferences;

/// What the encode dialog keeps between uses, apart from the recent formats.
struct EncodeSettings
{
    int32_t i32MOXTCMode = 2; ///< places in the lists of encoding modes
    int32_t i32ETCMode = 0;
    int32_t i32ASTCMode = 2;
    bool bMIPMaps = true;
    bool bDither = false;
    bool bDiff = false;
    bool bVerticalFlip = false;
};

/// @param pPreferences  null: the defaults. A mode that its list doesn't have is the default, too
[[nodiscard]] EncodeSettings loadEncodeSettings(Preferences* pPreferences);
void storeEncodeSettings(Preferences* pPreferences, const EncodeSettings& settings);

/// A format that was encoded to, and the API that it was chosen for, a place in k_aApiGroups.
struct RecentFormat
{
    moxtexture::PixelEncoding encoding;
    uint32_t uiAPI = 0;
};

/// Oldest first.
using RecentFormats = std::vector<RecentFormat>;

inline constexpr size_t k_uiMaxRecentFormats = 10;

/// The five parallel lists of the preferences. They may have been edited by hand: what lies past the end of the shortest list, is
/// not in the catalogue, names no API or stands there again further on is left out, and of more than ten the newest stay.
[[nodiscard]] RecentFormats loadRecentFormats(Preferences* pPreferences);
void storeRecentFormats(Preferences* pPreferences, const RecentFormats& formats);

/// Adds a choice as the newest; the same encoding further up goes, whatever API it was chosen for, and of the others the newest nine
/// stay.
void addRecentFormat(RecentFormats& formats, const RecentFormat& choice);

/// The API number for version 2 containers that goes with the newest entry; 2 where there is none.
[[nodiscard]] uint32_t getLegacyApi(const RecentFormats& formats);
