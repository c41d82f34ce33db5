#pragma once

#include "vynaudiofilterhost/IPresetExchange.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// The files in which hosts of VST 2.x plug-ins hand presets to each other: ".fxp" with one program, ".fxb" with a bank
/// of them. Numbers are big-endian, of 32 bits. All records begin with "CcnK", the number of bytes that follow, four
/// letters that say which record it is, its version, the effect's unique ID, a version that counts for nothing, and a
/// count.
///
/// - A program goes on with a name of 28 bytes. "FxCk": as many floats as counted, the parameters. "FPCh": a size and a
///   chunk.
/// - A bank goes on with 128 bytes, the first four of which are the current program's number from version 2 on. "FxBk":
///   as many programs as counted, each a record of its own. "FBCh": a size and a chunk, from which no program can be
///   taken.
namespace vynaudiofilterhost::vst {

/// The one program that a file gives.
struct VSTPresetContent {
    std::uint32_t uniqueID = 0;
    std::uint32_t effectVersion = 0;
    std::string name; ///< bytes as they are, UTF-8 when it is ours
    bool isChunk = false;
    std::vector<float> parameters;        ///< finite; of a program without a chunk
    std::span<unsigned char const> chunk; ///< a part of somebody else's bytes; of a program with one, never empty
    std::uint32_t parameterCount = 0;     ///< the effect's, as it stands beside a chunk; nothing is sized by it
};

/// Larger chunks are neither read nor written.
inline constexpr std::size_t kMaxPresetChunkBytes = std::size_t{256} << 20;

/// Whether the bytes begin as one of the files does.
/// [any-thread]
bool IsVSTPresetFile(std::span<unsigned char const> bytes);

/// Takes a file apart; of a bank the current program, of one of version 1 the first. Null, or what is wrong with it,
/// for a person, and `content` as it was. What follows the record is passed over. The numbers of following bytes count
/// for nothing, since many hosts write them wrong: a file is whole when what it counts lies within it.
/// [any-thread]
char const* ParseVSTPresetFile(std::span<unsigned char const> bytes, VSTPresetContent& content);

/// Makes `file` the bytes of a ".fxp". Null, or why the content can't be held, for a person, and `file` as it was. A
/// name of more than 27 bytes is cut in front of the character that doesn't fit.
/// [any-thread]
char const* MakeVSTPresetFile(VSTPresetContent const& content, IPresetExchange::Bytes& file);

/// Makes `file` the bytes of a ".fxb" of this program alone, and otherwise as MakeVSTPresetFile. Of a chunk there is
/// none.
/// [any-thread]
char const* MakeVSTBankFile(VSTPresetContent const& content, IPresetExchange::Bytes& file);

} // namespace vynaudiofilterhost::vst
