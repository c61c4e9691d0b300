#pragma once

#include <cstdint>
#include <memory>

#include <QtWidgets/QDialog>

namespace Ui
{
class GridSizeDialog;
}

/// Asks for the distance of the lines of the pixel grid. Run it with exec().
class CGridSizeSelect : public QDialog
{
    Q_OBJECT

public:
    /// @param ui32GridSize  shown at first, in pixels
    explicit CGridSizeSelect(uint32_t ui32GridSize, QWidget* pParent = nullptr);
    ~CGridSizeSelect() override;

    /// In pixels, 1 or more.
    [[nodiscard]] uint32_t getGridSize() const;

private:
    std::unique_ptr<Ui::GridSizeDialog> m_pForm;
};
