#pragma once

#include <memory>

#include <QtWidgets/QDockWidget>

#include "Texture/CMOXTextureHeader.h"

namespace Ui
{
class Dock_Toolbox;
}

/// The tools, as buttons over one page of options. None of them can be used yet.
class CToolBoxDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit CToolBoxDock(QWidget* pParent = nullptr);
    ~CToolBoxDock() override;

    /// Of the active texture; that of no texture without one.
    [[nodiscard]] const moxtexture::CMOXTextureHeader& getTextureHeader() const { return m_Header; }

public slots:
    /// The tools are for single views alone.
    void slotActiveWindow(bool hasWindow, bool isDiff);
    /// Keeps a copy of the header; null says that there is no texture.
    void slotUpdateTexture(const moxtexture::CMOXTextureHeader* pTextureHeader);

private:
    std::unique_ptr<Ui::Dock_Toolbox> m_pForm;
    moxtexture::CMOXTextureHeader m_Header;
};
