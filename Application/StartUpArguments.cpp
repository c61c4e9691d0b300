#include "Application/StartUpArguments.h"

OpenRequest readStartUpArguments(const QStringList& arguments)
{
    if (arguments.size() < 3)
        return {};
    if (arguments.size() == 3)
        return {OpenRequest::eOne, arguments[2], {}};
    return {OpenRequest::eTwo, arguments[2], arguments[3]};
}
