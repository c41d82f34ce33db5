#pragma once

#include "vyncore/strings/UString.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <vector>

/// What lies on the disk. Links are followed in every answer; whatever can't be looked at counts as absent.
/// An empty path and a path with a zero in it name nothing. Nothing here throws on account of the disk.
namespace os {

/// What a path leads to. Pipes, sockets and devices are kOther: opening one may wait for ever.
enum class FileKind { kNone, kFile, kDirectory, kOther };

/// Tells whether two paths lead to one object. A walk that enters each folder identity once can't run in a circle.
/// Valid only as long as the object exists.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t object = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): the check takes what the compiler writes for a null
    friend auto operator<=>(FileIdentity const&, FileIdentity const&) = default;
};

/// What tells a file from another one that has lain under the same path.
struct FileStamp {
    std::uint64_t size = 0;   ///< in bytes
    std::int64_t changed = 0; ///< nanoseconds since 1970: the content was, or so somebody says
    std::int64_t altered = 0; ///< likewise: anything was; nobody can set it
    std::uint64_t object = 0; ///< as in FileIdentity

    bool operator==(FileStamp const&) const = default;
};

struct DirectoryEntry {
    vyncore::UString name;
    FileKind kind = FileKind::kNone;
    FileIdentity identity;
};

/// [any-thread]
FileKind GetFileKind(vyncore::UString const& path);

/// The identity of what `path` leads to; empty when there is nothing.
/// [any-thread]
std::optional<FileIdentity> GetFileIdentity(vyncore::UString const& path);

/// Empty when there is nothing.
/// [any-thread]
std::optional<FileStamp> GetFileStamp(vyncore::UString const& path);

/// What lies directly in the folder `path`, sorted by name, without "." and ".."; empty when it can't be read.
/// Left out: a link that leads nowhere, and a name that is no Unicode text, since no path of ours could reach it.
/// [any-thread]
std::vector<DirectoryEntry> ListDirectory(vyncore::UString const& path);

/// Joins a folder's path and a name with the system's separator, without doubling it. An empty folder gives an
/// empty path.
/// [any-thread]
vyncore::UString JoinPath(vyncore::UString const& folder, vyncore::UString const& name);

} // namespace os
