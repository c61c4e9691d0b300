#pragma once

/// Is the external program that encodes ASTC at hand? This program cannot call one yet.
[[nodiscard]] inline bool isASTCEncoderFound()
{
    return false;
}
