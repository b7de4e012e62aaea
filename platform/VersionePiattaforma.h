#pragma once

/// The platform's version code: 1 for the oldest Windows family, 2 for hosts that show the program's own hints,
/// 3 for Windows from version 6 on, which shows none.
[[nodiscard]] int VersionePiattaforma();
