#pragma once

/// The names that the program shows of itself and goes by: its settings, its socket, the dialogs of the Help menu.
inline constexpr char k_acProductName[] = "Halvane";
inline constexpr char k_acProductVersion[] = "4.23.0";
inline constexpr char k_acProductNameAndVersion[] = "Halvane 4.23.0";
inline constexpr char k_acProductUses[] = "FreeType Project version 2.4.7 |\nMOX Texture Library version 4.23";
