#pragma once

#include <QtCore/QString>

/// A place that the dialogs of the Help menu lead to.
struct ProductLink
{
    const char* pText;   ///< what the user reads
    const char* pTarget; ///< what the desktop opens
};

/// Configuration of the product: whoever ships it puts in addresses of their own.
constexpr ProductLink k_SupportLink = {"support@example.com", "mailto:support@example.com"};
constexpr ProductLink k_WebsiteLink = {"www.example.com/halvane", "https://www.example.com/halvane"};
constexpr ProductLink k_ForumLink = {"forum.example.com/halvane", "https://forum.example.com/halvane"};

/// @param strColour  where it is not to be the desktop's colour of links
/// @return the link as a label shows it
inline QString getLinkMarkup(const ProductLink& link, const QString& strColour = {})
{
    const QString strStyle = strColour.isEmpty() ? QString() : QString(" style=\"color: %1\"").arg(strColour);
    return QString("<a href=\"%1\"%2>%3</a>").arg(link.pTarget, strStyle, link.pText);
}
