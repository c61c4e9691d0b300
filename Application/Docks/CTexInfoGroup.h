#pragma once

#include <memory>
#include <string>

#include <QtWidgets/QGroupBox>

namespace moxtexture
{
class CMOXTextureHeader;
}
namespace Ui
{
class TexInfoGroup;
}

/// What one header says, line by line.
class CTexInfoGroup : public QGroupBox
{
    Q_OBJECT

public:
    explicit CTexInfoGroup(QWidget* pParent = nullptr);
    ~CTexInfoGroup() override;

    /// Shows a header; signals nothing.
    /// @param strName  UTF-8; its last path component is shown
    void fill(const std::string& strName, const moxtexture::CMOXTextureHeader& header);
    /// The range belongs to linear data alone: index 1 of the colour space box.
    void showRange(int index);

signals:
    /// The user's choice: 0 sRGB, 1 linear.
    void colourSpaceChosen(int index);

private:
    std::unique_ptr<Ui::TexInfoGroup> m_pForm;
};
