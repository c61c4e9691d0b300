#include "Resources/Resources.h"

#include <QtCore/QDir>

void initResources()
{
    Q_INIT_RESOURCE(Halvane);
}
