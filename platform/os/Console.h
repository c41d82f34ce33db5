#pragma once

#include <string>
#include <string_view>

/// What a command-line program settles with the system about its standard streams.
namespace os {

/// Makes the standard streams safe before anything else is opened or loaded: a stream that was closed at the start is
/// occupied, so that no file takes its place; writing into a pipe that nobody reads, or beyond the largest file
/// allowed, fails instead of ending the process; and standard output is set aside for WriteOutput, so that what loaded
/// modules print there goes to standard error. To be called once, at the start of the program.
/// [main-thread]
void PrepareConsole();

/// Writes to the standard output that PrepareConsole has set aside. False when not everything could be written.
/// [main-thread]
bool WriteOutput(std::string_view text);

/// Sets standard input aside for ReadInputLine: whoever else reads there finds its end. To be called once, after
/// PrepareConsole and before anything is loaded.
/// [main-thread]
void SetInputAside();

/// Waits for the next line of what SetInputAside has set aside, and gives it without its end. False when there is none
/// any more; what stands behind the last end of a line is none.
/// [main-thread]
bool ReadInputLine(std::string& line);

/// Whether a person looks at standard error.
/// [any-thread]
bool IsErrorTerminal();

} // namespace os
