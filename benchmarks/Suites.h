// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

class BenchmarkClip;
class Comparisons;

/// Each registers its benchmarks, and what to compare them with.
void registerLookUpBenchmarks(Comparisons &comparisons);
void registerStartUpBenchmarks(Comparisons &comparisons);
void registerShowBenchmarks(Comparisons &comparisons);
void registerPointerBenchmarks(Comparisons &comparisons);
void registerVideoBenchmarks(Comparisons &comparisons);

/// Part of the former.
void registerPictureBenchmarks(Comparisons &comparisons,
                               const std::shared_ptr<BenchmarkClip> &clip);
