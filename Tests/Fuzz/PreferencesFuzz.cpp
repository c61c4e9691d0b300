#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "Application/Common/MemoryPreferences.h"
#include "Common/Preferences.h"

namespace
{

void require(bool bTrue)
{
    if (!bTrue)
        std::abort();
}

/// Reads a key as every type. A field keeps its preset wherever that fails.
void readAll(const Preferences& preferences, const std::string& strKey)
{
    std::string strText = "preset";
    require(preferences.getText(strKey, strText) == Preferences::eDone || strText == "preset");
    int32_t i32Value = -7;
    require(preferences.getInt(strKey, i32Value) == Preferences::eDone || i32Value == -7);
    uint32_t ui32Value = 7;
    require(preferences.getUint(strKey, ui32Value) == Preferences::eDone || ui32Value == 7);
    double dValue = 0.5;
    require(preferences.getReal(strKey, dValue) == Preferences::eDone || dValue == 0.5);
    bool bValue = true;
    require(preferences.getBool(strKey, bValue) == Preferences::eDone || bValue);

    std::vector<uint8_t> bytes = {7};
    require(preferences.getData(strKey, bytes) == Preferences::eDone || bytes.size() == 1);
    std::vector<std::string> texts;
    require(preferences.getTextArray(strKey, texts) == Preferences::eDone || texts.empty());
    std::vector<int32_t> ints;
    require(preferences.getIntArray(strKey, ints) == Preferences::eDone || ints.empty());
    std::vector<uint32_t> uints;
    require(preferences.getUintArray(strKey, uints) == Preferences::eDone || uints.empty());
    std::vector<double> reals;
    require(preferences.getRealArray(strKey, reals) == Preferences::eDone || reals.empty());
    std::vector<bool> bools;
    require(preferences.getBoolArray(strKey, bools) == Preferences::eDone || bools.empty());
}

void checkRefused(Preferences& preferences, const std::string& strError)
{
    int32_t i32Value = 0;
    require(!strError.empty() && preferences.getInt("a", i32Value) == Preferences::eNoDocument);
    require(preferences.setInt("a", 1) == Preferences::eNoDocument && !preferences.save(true));
}

} // namespace

/// Any bytes as a preferences file: read, written over, saved and loaded again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    MemoryPreferencesFile file;
    file.strContent.assign(pBytes, pBytes + uiSize);
    Preferences preferences("Fuzz", 0, std::make_unique<CMemoryPreferences>(file));
    std::string strError;
    if (!preferences.load(strError, true))
    {
        checkRefused(preferences, strError);
        return 0;
    }
    require(strError.empty());

    for (const char* strKey : {"a", "a/a", "b", "Main/State", "Recent files", "c/d/e", ""})
        readAll(preferences, strKey);
    const std::vector<std::string> texts = {"/x y.mox", ""};
    const uint8_t aui8Data[] = {0, 255};
    preferences.setTextArray("Recent files", texts);
    preferences.setData("Main/State", aui8Data, sizeof aui8Data);
    preferences.setText("a", "<&>");
    preferences.setBool("c/d/e", true);
    // The layout of a file that goes deep may make it longer than is taken again.
    if (!preferences.save())
        return 0;

    require(preferences.load(strError, false));
    std::vector<std::string> textsAgain;
    require(preferences.getTextArray("Recent files", textsAgain) == Preferences::eDone && textsAgain == texts);
    std::vector<uint8_t> bytes;
    require(preferences.getData("Main/State", bytes) == Preferences::eDone && bytes == std::vector<uint8_t>({0, 255}));
    std::string strText;
    require(preferences.getText("a", strText) == Preferences::eDone && strText == "<&>");
    bool bValue = false;
    require(preferences.getBool("c/d/e", bValue) == Preferences::eDone && bValue);
    return 0;
}
