#pragma once

#include "Composition/EncodeTexture.h"

class QWidget;

/// Tells the user in a message box which step of an encode failed; silent for eEncodeDone.
void showEncodeFailure(QWidget* pParent, moxtexture::EEncodeResult eResult);

/// The same for a dialog that was accepted with a format that its texture cannot take.
void showInvalidEncodeOptions(QWidget* pParent);
