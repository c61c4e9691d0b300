#pragma once

#include <memory>
#include <string>

#include <QtWidgets/QDockWidget>

#include "Formats/ChannelTypes.h"

namespace moxtexture
{
class CMOXTextureHeader;
}
namespace Ui
{
class Dock_TexInfo;
}

/// Shows what the header of the active texture says, or the headers of the two textures that are compared. Keeps nothing of them.
class CTexInfoDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit CTexInfoDock(QWidget* pParent = nullptr);
    ~CTexInfoDock() override;

signals:
    /// The user chose a colour space; never sent when the dock is filled.
    /// @param image  0 for the upper group, 1 for the lower one
    void colourSpaceChanged(int image, moxtexture::EMOXTColourSpace colourSpace);

public slots:
    /// Shows one texture, two, or none; a group without a header is hidden. Nothing is kept of the arguments.
    void slotUpdateTextures(const std::string* originalName, const moxtexture::CMOXTextureHeader* original,
                            const std::string* compressedName, const moxtexture::CMOXTextureHeader* compressed);
    /// Sends the choice on: index 0 is sRGB, 1 linear. The group is the one that calls; the upper one if none does.
    void onColourSpaceChanged(int index);

private:
    std::unique_ptr<Ui::Dock_TexInfo> m_pForm;
};
