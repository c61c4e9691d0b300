#pragma once

class QWidget;

/// Tells the user that a texture could not be saved.
void showSaveFailure(QWidget* pParent);
