// Encoding the active texture into a new window.

#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QMdiSubWindow>

#include "Composition/EncodeTexture.h"
#include "Dialogs/CFilterEncodeDialog.h"
#include "Dialogs/EncodeMessages.h"
#include "Documents/CTexViewWindowSingle.h"
#include "MainWindow/CMainWindow.h"
#include "MainWindow/CWaitNotice.h"
#include "MainWindow/MemoryGuard.h"

namespace
{

constexpr bool k_bHideDiff = true; // there are no comparisons yet

moxtexture::EncodeRequest getRequest(const CFilterEncodeDialog& dialog)
{
    moxtexture::EncodeRequest request;
    request.target.pixelFormat = dialog.getPixelFormat();
    request.target.eChannelType = dialog.getChannelType();
    request.target.eColourSpace = dialog.getColourSpace();
    request.uiQuality = dialog.getQuality();
    request.bDither = dialog.getDither();
    request.bVerticalFlip = dialog.getVerticalFlip();
    request.bGenerateMIPMaps = dialog.getGenerateMIPMaps();
    return request;
}

} // namespace

void CMainWindow::slotEncode()
{
    encodeCurrent();
}

/// @return the window of the result; null after a cancel or a failure, which has been shown
QMdiSubWindow* CMainWindow::encodeCurrent()
{
    QMdiSubWindow* pEncoded = nullptr;
    if (!runWithinMemory([&] { pEncoded = askAndEncode(); }))
        showEncodeFailure(this, moxtexture::eEncodeFailed);
    return pEncoded;
}

QMdiSubWindow* CMainWindow::askAndEncode()
{
    // While the dialog is open other programs may send files, so what is active now need not be so afterwards.
    const QPointer<CTexViewWindowSingle> pSource = getCurrentSingle();
    const QPointer<QMdiSubWindow> pSourceWindow = getCurrentSubWindow();
    if (!pSource)
        return nullptr;
    const uint32_t ui32Padding = pSource->getPadding();

    CFilterEncodeDialog dialog(pSource->getWorkingTexture(), this, &m_Preferences, k_bHideDiff);
    int iResult = -1;
    while (iResult == -1)
        iResult = dialog.execDialog();
    if (iResult != 1 || !pSource)
        return nullptr;

    moxtexture::EncodedTexture encoded;
    {
        const QScopedValueRollback<bool> busy(m_bEncoding, true);
        const CWaitNotice notice("Compressing texture, please wait...", this);
        encoded = moxtexture::encodeTexture(pSource->getWorkingTexture(), getRequest(dialog));
    }
    if (encoded.eResult != moxtexture::eEncodeDone)
    {
        showEncodeFailure(this, encoded.eResult);
        return nullptr;
    }
    const std::string strName = moxtexture::getEncodedName(pSource->getFullTitle().toStdString(), dialog.getPixelFormat());
    QMdiSubWindow* pEncoded = openTextureWindow(std::move(encoded.working), std::move(encoded.stored), QString::fromStdString(strName),
                                                eDocumentEncoded, pSourceWindow, true);
    if (pEncoded != nullptr)
        emit signalPaddingUpdated(ui32Padding);
    m_ui32LegacySaveApi = dialog.getLegacyApi();
    return pEncoded;
}
