#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QImage>

#include "Support/RunProgram.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

/// The real program, and what its tests put in and take out.
namespace testsupport
{

/// The program's path and its words.
inline std::vector<std::string> cliWords(const std::vector<std::string>& words)
{
    std::vector<std::string> all = {HALVANE_CLI_PATH};
    all.insert(all.end(), words.begin(), words.end());
    return all;
}

inline ProgramRun cli(const std::vector<std::string>& words, const ProgramSetting& setting = {})
{
    return runProgram(cliWords(words), setting);
}

/// Done, with nothing said on either stream.
inline void expectDone(const ProgramRun& run)
{
    EXPECT_EQ(0, run.iStatus) << run.strErrors << " signal " << run.iSignal;
    EXPECT_EQ("", run.strOutput);
    EXPECT_EQ("", run.strErrors);
}

/// Failed with exactly that one line.
inline void expectFailed(const ProgramRun& run, const std::string& strText)
{
    EXPECT_EQ(1, run.iStatus) << " signal " << run.iSignal;
    EXPECT_EQ("", run.strOutput);
    EXPECT_EQ("halvane-cli: error: " + strText + "\n", run.strErrors);
}

/// Refused for its words, with a message that holds strPart and the usage of the verb, or of the program for an empty one.
inline void expectWrongWords(const ProgramRun& run, const std::string& strPart, const std::string& strVerb)
{
    EXPECT_EQ(2, run.iStatus) << run.strErrors << " signal " << run.iSignal;
    EXPECT_EQ("", run.strOutput);
    EXPECT_NE(std::string::npos, run.strErrors.find(strPart)) << run.strErrors;
    EXPECT_NE(std::string::npos, run.strErrors.find("Usage:\n  halvane-cli " + (strVerb.empty() ? "[" : strVerb + " "))) << run.strErrors;
    EXPECT_EQ(std::string::npos, run.strErrors.find("halvane-cli: error:")) << run.strErrors;
}

/// Writes RGBA pixels as an image by Qt itself; the extension tells the kind.
inline void writeImage(const std::string& strPath, const std::vector<uint8_t>& pixels, int iWidth, int iHeight)
{
    const QImage image(pixels.data(), iWidth, iHeight, 4 * iWidth, QImage::Format_RGBA8888);
    ASSERT_TRUE(image.save(QString::fromUtf8(strPath.c_str()))) << strPath;
}

inline void writePicture(const std::string& strPath, uint32_t uiWidth, uint32_t uiHeight, uint64_t ui64Seed = 1)
{
    writeImage(strPath, makePicture(uiWidth, uiHeight, ui64Seed), static_cast<int>(uiWidth), static_cast<int>(uiHeight));
}

inline QImage readImage(const std::string& strPath)
{
    return QImage(QString::fromUtf8(strPath.c_str())).convertToFormat(QImage::Format_RGBA8888);
}

/// The end of a file, where a native file has its data.
inline std::vector<uint8_t> lastBytes(const std::string& strPath, size_t uiCount)
{
    const std::vector<uint8_t> bytes = readBytes(strPath);
    EXPECT_LE(uiCount, bytes.size()) << strPath;
    return uiCount <= bytes.size() ? std::vector<uint8_t>(bytes.end() - static_cast<ptrdiff_t>(uiCount), bytes.end())
                                   : std::vector<uint8_t>();
}

/// What `info --json` tells of a file.
inline QJsonObject infoOf(const std::string& strPath)
{
    const ProgramRun run = cli({"info", strPath, "--json"});
    EXPECT_EQ(0, run.iStatus) << run.strErrors;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(run.strOutput), &error);
    EXPECT_EQ(QJsonParseError::NoError, error.error) << run.strOutput;
    return document.object();
}

inline std::string textOf(const QJsonObject& object, const char* strKey)
{
    EXPECT_TRUE(object[strKey].isString()) << strKey;
    return object[strKey].toString().toStdString();
}

inline double numberOf(const QJsonObject& object, const char* strKey)
{
    EXPECT_TRUE(object[strKey].isDouble()) << strKey;
    return object[strKey].toDouble();
}

} // namespace testsupport
