#pragma once

#include <cstdint>
#include <string>

#include "Documents/DocumentKinds.h"
#include "Texture/CMOXTexture.h"

/// What is open in a window, without the window: the texture that is edited, the one that goes to disk, and one step of undo.
///
/// The working texture is uncompressed; every edit changes it, and it is shown. The stored texture has the format in which the
/// file arrived or that the last encoding left. Edits leave it behind until a save brings it up to date by encoding anew.
///
/// No function throws: where memory is refused, a function gives false and leaves a document that can go on.
class CTextureDocument
{
public:
    /// Takes both textures over without a copy. A document of any kind but a file has never been saved and counts two changes.
    CTextureDocument(moxtexture::CMOXTexture stored, moxtexture::CMOXTexture working, uint32_t ui32Kind);

    [[nodiscard]] moxtexture::CMOXTexture& getWorking() { return m_Working; }
    [[nodiscard]] const moxtexture::CMOXTexture& getWorking() const { return m_Working; }
    [[nodiscard]] moxtexture::CMOXTexture& getStored() { return m_Stored; }
    [[nodiscard]] const moxtexture::CMOXTexture& getStored() const { return m_Stored; }
    /// The working texture in 8-bit RGBA, for drawing. Empty until the first rebuildDisplay().
    [[nodiscard]] const moxtexture::CMOXTexture& getDisplay() const { return m_Display; }

    [[nodiscard]] bool canUndo() const { return m_bCanUndo; }
    [[nodiscard]] bool canRedo() const { return m_bCanRedo; }
    /// There were edits since the last save.
    [[nodiscard]] bool isModified() const { return m_bModified; }
    /// The stored texture lacks an edit, or has one that was undone. A save that wrote nothing leaves it so.
    [[nodiscard]] bool isStoredBehind() const { return m_ui64StoredState != m_ui64WorkingState; }
    /// Edits since the last save, less those undone; 1 or more shows in the title.
    [[nodiscard]] int32_t getChangeCount() const { return m_i32ChangeCount; }
    [[nodiscard]] bool isNeverSaved() const { return m_bNeverSaved; }
    /// The stored texture has another colour space than when it was opened or last saved. The next save writes it as it is: this is
    /// no modification and no counted change, but something to lose.
    [[nodiscard]] bool isColourSpaceUnsaved() const { return m_Stored.getColourSpace() != m_eSavedColourSpace; }
    [[nodiscard]] uint32_t getSourceKind() const { return m_ui32SourceKind; }
    void setSourceKind(uint32_t ui32Kind) { m_ui32SourceKind = ui32Kind; }

    /// Keeps the working texture for undo. What was kept before is gone, also where memory is refused.
    /// @return false where memory is refused: there is no undo then, and the edit should not begin
    bool beginEdit();
    /// Counts the edit and rebuilds the display texture.
    /// @return that of rebuildDisplay()
    bool endEdit();
    /// Exchanges the working texture with the one kept; a second undo is not possible, only a redo.
    /// @return false if there was nothing to undo
    bool undo();
    /// @return false if there was nothing to redo
    bool redo();

    /// Makes the display texture from the working one.
    /// @return false if it could not be converted, or memory is refused
    bool rebuildDisplay();

    /// Encodes the working texture into the format, channel type and colour space of the stored one, with default options, and
    /// ends the undo history, so that no undo goes back past it.
    /// @return false if that failed: the document, with its undo, is as it was
    [[nodiscard]] bool encodeStored();

    /// Gives both textures the padding record for ui32Padding (0 and 1: none) and writes the stored one. What its container cannot
    /// hold, metadata above all, stays in the document. An earlier file survives a failure.
    /// @param strPath  UTF-8; its extension chooses the format
    /// @return false also where the container has nothing that fits the stored encoding
    [[nodiscard]] bool write(const std::string& strPath, uint32_t ui32Padding);

    /// Writes the stored texture as a native file of version 2, whatever the extension. An earlier file survives a failure.
    /// @param ui32Api  whose pixel types are written, 1 to 7; see saveLegacy()
    /// @return false also where that API has no type for the stored encoding, or the texture is deeper than 1
    [[nodiscard]] bool writeLegacy(const std::string& strPath, uint32_t ui32Api) const;

    /// Writes one surface of the working texture as an ordinary image, in the format that the extension tells. Anything but 8-bit
    /// RGBA is converted to that in a copy of the surface. An earlier file survives a failure.
    [[nodiscard]] bool writeImage(const std::string& strPath, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace) const;

    /// The document is on disk as it is, or counts as if it were.
    void markSaved();

private:
    /// False where what was kept for undo is the working texture itself: the edit was begun only, and there is nothing to count.
    [[nodiscard]] bool isEditKept() const { return m_ui64UndoState != m_ui64WorkingState; }
    void exchange();

    moxtexture::CMOXTexture m_Working;
    moxtexture::CMOXTexture m_Stored;
    moxtexture::CMOXTexture m_Display;
    moxtexture::CMOXTexture m_Undo;
    // Every edit makes a state with a number of its own; textures of one number show the same.
    uint64_t m_ui64LastState = 0;
    uint64_t m_ui64WorkingState = 0;
    uint64_t m_ui64UndoState = 0;
    uint64_t m_ui64StoredState = 0;
    bool m_bCanUndo = false;
    bool m_bCanRedo = false;
    bool m_bModified = false;
    int32_t m_i32ChangeCount = 0;
    moxtexture::EMOXTColourSpace m_eSavedColourSpace;
    uint32_t m_ui32SourceKind;
    bool m_bNeverSaved = false;
};
