#pragma once

#include "VarnetCore/Storage/StorageFamily.h"
#include "VarnetCore/Storage/StorageProject.h"

#include <QLocale>
#include <QString>

#include <cstddef>
#include <cstdint>

/// The storage page's words: whole English sentences, figures in the user's own way. What is not known yet is
/// "—".
namespace varnet::StorageTexts {

/// Whether what is known of a project is less than the whole, and stays so: one that a running scan has yet
/// to measure is none.
bool isPartial(const StorageProject& project, bool scanning) noexcept;
bool isPartial(const StorageFamily& family, bool scanning) noexcept;

/// What a project is called beside others of its family: its branch, or what stands for it.
QString title(const StorageProject& project);
/// Where it was found, or how far the scan has come with it.
QString subtitle(const StorageProject& project, bool scanning);
/// "3 worktrees · Claude Code".
QString subtitle(const StorageFamily& family, bool scanning);

/// "46.8 GB".
QString size(std::uint64_t bytes, const QLocale& locale);
QString size(const StorageProject& project, const QLocale& locale);
QString size(const StorageFamily& family, const QLocale& locale);
/// "3.9 GB to review"; empty when there is nothing.
QString toReview(std::uint64_t bytes, const QLocale& locale);
/// "14 Nov 2026".
QString day(std::optional<Date> date, const QLocale& locale);

/// What moving a candidate of this kind means.
QString note(StorageBucket bucket);
/// The folder belongs to a workspace manager, which keeps records of it.
bool isManaged(const StorageProject& project) noexcept;
/// An agent or a manager of agents has made it.
bool isOfAgent(const StorageProject& project) noexcept;

} // namespace varnet::StorageTexts
