#pragma once

/// The desktop program from its application object to the end of its event loop: everything but what belongs to the process itself.
///
/// A path among the arguments is taken to start from the working folder.
/// @param iCount, apArguments  as main() has them; they must outlive the call
/// @return the exit status
int runApplication(int iCount, char** apArguments);
