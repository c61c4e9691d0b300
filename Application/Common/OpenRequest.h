#pragma once

#include <QtCore/QString>

/// What to open, asked for from outside the program.
struct OpenRequest
{
    enum EKind
    {
        eNothing,
        eOne, ///< strFirst
        eTwo  ///< strFirst and strSecond, to be compared
    };

    EKind eKind = eNothing;
    QString strFirst, strSecond;
};
