#include "Documents/SaveFailure.h"

#include <QtWidgets/QMessageBox>

void showSaveFailure(QWidget* pParent)
{
    QMessageBox::critical(pParent, "An Error Has Occurred",
                          "An unknown error has occurred, please try a different texture file type, or contact Bluedesk for support");
}
