#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace etcinterop
{

/// Somebody else's decoder: Mesa's software renderer, which takes blocks as compressed textures of OpenGL ES 3 and is asked for their
/// texels. Needs neither a screen nor a graphics card.
class CSoftwareRenderer
{
public:
    CSoftwareRenderer();
    CSoftwareRenderer(const CSoftwareRenderer&) = delete;
    CSoftwareRenderer& operator=(const CSoftwareRenderer&) = delete;
    ~CSoftwareRenderer();

    /// What keeps it from work; empty where nothing does. A package that is missing shows here.
    const std::string& getProblem() const { return m_strProblem; }

    /// @param uiGLFormat  the internal format's number
    /// @param blocks      of the whole surface, in row order
    /// @return red, green, blue and alpha of each pixel as a shader sees them, rows without padding; empty where OpenGL tells of an error
    std::vector<float> readTexels(uint32_t uiGLFormat, uint32_t uiWidth, uint32_t uiHeight, const std::vector<uint8_t>& blocks);

private:
    /// @return what went wrong, or nothing
    std::string open();
    std::string makeProgram();

    std::string m_strProblem;
    void* m_pDisplay = nullptr; ///< EGLDisplay
    void* m_pContext = nullptr; ///< EGLContext
    uint32_t m_uiProgram = 0;
};

} // namespace etcinterop
