// Writes a seeded picture as a file that any program reads: the bundled sample, and inputs for measuring other programs.
//   make-picture OUT.png WIDTH HEIGHT [SEED]

#include <cstdlib>
#include <iostream>
#include <vector>

#include <QImage>
#include <QString>

#include "Support/SeededPictures.h"

int main(int argc, char** argv)
{
    if (argc < 4)
    {
        std::cerr << "usage: make-picture OUT.png WIDTH HEIGHT [SEED]\n";
        return 2;
    }
    const auto uiWidth = static_cast<uint32_t>(std::strtoul(argv[2], nullptr, 10));
    const auto uiHeight = static_cast<uint32_t>(std::strtoul(argv[3], nullptr, 10));
    const uint64_t ui64Seed = argc > 4 ? std::strtoull(argv[4], nullptr, 10) : 1;
    constexpr uint32_t uiLargest = 16384;
    if (uiWidth < 1 || uiWidth > uiLargest || uiHeight < 1 || uiHeight > uiLargest)
    {
        std::cerr << "make-picture: a side is 1 to " << uiLargest << " pixels\n";
        return 2;
    }

    const std::vector<uint8_t> pixels = testsupport::makePicture(uiWidth, uiHeight, ui64Seed);
    const QImage image(pixels.data(), static_cast<int>(uiWidth), static_cast<int>(uiHeight), QImage::Format_RGBA8888);
    if (!image.save(QString::fromUtf8(argv[1])))
    {
        std::cerr << "make-picture: cannot write " << argv[1] << "\n";
        return 1;
    }
    return 0;
}
