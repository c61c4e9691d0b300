#pragma once

/// Makes the pictures under ":/" known to Qt: a static library's resources are not found by themselves. May be called again.
void initResources();
