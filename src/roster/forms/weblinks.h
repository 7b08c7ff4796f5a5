#pragma once

#include <QString>

// The program's web addresses, chosen when it is built (see the README).
inline QString HomePageAddress()
{
    return QStringLiteral(QUORVANE_WEBSITE_URL);
}

inline QString SupportPageAddress()
{
    return QStringLiteral(QUORVANE_SUPPORT_URL);
}

inline QString PartnerSiteAddress()
{
    return QStringLiteral(QUORVANE_PARTNER_URL);
}
