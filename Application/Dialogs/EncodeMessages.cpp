#include "Dialogs/EncodeMessages.h"

#include <QtWidgets/QMessageBox>

using namespace moxtexture;

namespace
{

struct FailureRow
{
    EEncodeResult eResult;
    const char* strTitle;
    const char* strText;
};

constexpr FailureRow k_aFailures[] = {
    {eEncodeFlipFailed, "Cannot Vertically Flip", "Unable to flip the texture - unknown reason. Please contact Bluedesk for support."},
    {eEncodeMIPMapsFailed, "Cannot Generate MIP-Maps",
     "Unable to generate MIP-Maps - unknown reason. Please contact Bluedesk for support."},
    {eEncodeFailed, "Cannot Encode", "Unable to encode the texture - unknown reason. Please contact Bluedesk for support."},
};

} // namespace

void showEncodeFailure(QWidget* pParent, EEncodeResult eResult)
{
    for (const FailureRow& row : k_aFailures)
        if (row.eResult == eResult)
            QMessageBox::critical(pParent, row.strTitle, row.strText);
}

void showInvalidEncodeOptions(QWidget* pParent)
{
    QMessageBox::critical(pParent, "Cannot Encode",
                          "Unable to encode as invalid options selected. Please check your pixel format and try again.");
}
