#include "Library/Codecs/ETC/EtcInteropRenderer.h"

#include <cstdlib>
#include <cstring>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GLES3/gl3.h>

namespace etcinterop
{
namespace
{

/// A triangle over everything.
constexpr const char* k_pcVertices = R"(#version 300 es
void main()
{
    gl_Position = vec4(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0, 0.0, 1.0);
}
)";

/// The bits of the floats, so that nothing on their way out rounds or clamps them.
constexpr const char* k_pcTexels = R"(#version 300 es
precision highp float;
precision highp int;
uniform highp sampler2D blocks;
out highp uvec4 bits;
void main()
{
    bits = floatBitsToUint(texelFetch(blocks, ivec2(gl_FragCoord.xy), 0));
}
)";

bool addShader(GLuint uiProgram, GLenum eKind, const char* pcSource)
{
    const GLuint uiShader = glCreateShader(eKind);
    glShaderSource(uiShader, 1, &pcSource, nullptr);
    glCompileShader(uiShader);
    GLint iGood = 0;
    glGetShaderiv(uiShader, GL_COMPILE_STATUS, &iGood);
    glAttachShader(uiProgram, uiShader);
    glDeleteShader(uiShader); // the program keeps it
    return iGood != 0;
}

/// Texels are fetched by number, so filters must ask for no levels.
GLuint makeTexture()
{
    GLuint uiTexture = 0;
    glGenTextures(1, &uiTexture);
    glBindTexture(GL_TEXTURE_2D, uiTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    return uiTexture;
}

} // namespace

CSoftwareRenderer::CSoftwareRenderer()
{
    // The plain one: it compiles nothing while it runs, and writes no files.
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    setenv("GALLIUM_DRIVER", "softpipe", 1);
    setenv("MESA_SHADER_CACHE_DISABLE", "true", 1);
    m_strProblem = open();
    if (m_strProblem.empty())
        m_strProblem = makeProgram();
}

CSoftwareRenderer::~CSoftwareRenderer()
{
    if (m_pDisplay == nullptr)
        return;
    eglMakeCurrent(m_pDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (m_pContext != nullptr)
        eglDestroyContext(m_pDisplay, m_pContext);
    eglTerminate(m_pDisplay);
    eglReleaseThread();
}

std::string CSoftwareRenderer::open()
{
    m_pDisplay = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (m_pDisplay == EGL_NO_DISPLAY || eglInitialize(m_pDisplay, nullptr, nullptr) == EGL_FALSE)
        return "EGL has no display without a surface: is libgl1-mesa-dri installed?";

    const EGLint aiConfiguration[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_ES3_BIT, EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_NONE};
    const EGLint aiContext[] = {EGL_CONTEXT_CLIENT_VERSION, 3, EGL_NONE};
    EGLConfig pConfiguration = nullptr;
    EGLint iCount = 0;
    if (eglBindAPI(EGL_OPENGL_ES_API) == EGL_FALSE ||
        eglChooseConfig(m_pDisplay, aiConfiguration, &pConfiguration, 1, &iCount) == EGL_FALSE || iCount == 0)
        return "EGL has no configuration for OpenGL ES 3";
    m_pContext = eglCreateContext(m_pDisplay, pConfiguration, EGL_NO_CONTEXT, aiContext);
    if (m_pContext == nullptr || eglMakeCurrent(m_pDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, m_pContext) == EGL_FALSE)
        return "EGL makes no context of OpenGL ES 3";

    const auto* pcRenderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    if (pcRenderer == nullptr || std::strstr(pcRenderer, "softpipe") == nullptr)
        return "not the software renderer";
    const auto* pcExtensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    if (pcExtensions == nullptr || std::strstr(pcExtensions, "GL_OES_compressed_ETC1_RGB8_texture") == nullptr)
        return "the renderer takes no ETC1";
    return {};
}

std::string CSoftwareRenderer::makeProgram()
{
    m_uiProgram = glCreateProgram();
    if (!addShader(m_uiProgram, GL_VERTEX_SHADER, k_pcVertices) || !addShader(m_uiProgram, GL_FRAGMENT_SHADER, k_pcTexels))
        return "a shader does not compile";
    glLinkProgram(m_uiProgram);
    GLint iGood = 0;
    glGetProgramiv(m_uiProgram, GL_LINK_STATUS, &iGood);
    if (iGood == 0)
        return "the shaders do not link";
    glUseProgram(m_uiProgram);
    return {};
}

std::vector<float> CSoftwareRenderer::readTexels(uint32_t uiGLFormat, uint32_t uiWidth, uint32_t uiHeight,
                                                 const std::vector<uint8_t>& blocks)
{
    const auto iWidth = static_cast<GLsizei>(uiWidth), iHeight = static_cast<GLsizei>(uiHeight);
    GLuint uiFramebuffer = 0;
    glGenFramebuffers(1, &uiFramebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, uiFramebuffer);
    const GLuint uiTarget = makeTexture();
    glTexStorage2D(GL_TEXTURE_2D, 1, GL_RGBA32UI, iWidth, iHeight);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, uiTarget, 0);

    const GLuint uiBlocks = makeTexture();
    glCompressedTexImage2D(GL_TEXTURE_2D, 0, uiGLFormat, iWidth, iHeight, 0, static_cast<GLsizei>(blocks.size()), blocks.data());
    glViewport(0, 0, iWidth, iHeight);
    glDrawArrays(GL_TRIANGLES, 0, 3);

    std::vector<uint32_t> bits(size_t{uiWidth} * uiHeight * 4);
    glReadPixels(0, 0, iWidth, iHeight, GL_RGBA_INTEGER, GL_UNSIGNED_INT, bits.data());
    const bool bGood = glGetError() == GL_NO_ERROR;

    const GLuint auiTextures[] = {uiTarget, uiBlocks};
    glDeleteTextures(2, auiTextures);
    glDeleteFramebuffers(1, &uiFramebuffer);
    if (!bGood)
        return {};
    std::vector<float> texels(bits.size());
    static_assert(sizeof(float) == sizeof(uint32_t));
    std::memcpy(texels.data(), bits.data(), bits.size() * sizeof(float));
    return texels;
}

} // namespace etcinterop
