// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

class BenchmarkClip;
class Comparisons;

/// Each function registers its benchmarks and their comparisons.
void registerLookUpBenchmarks(Comparisons &comparisons);
void registerStartUpBenchmarks(Comparisons &comparisons);
void registerShowBenchmarks(Comparisons &comparisons);
void registerWarmUpBenchmarks(Comparisons &comparisons);
void registerPointerBenchmarks(Comparisons &comparisons);
void registerIdleBenchmarks(Comparisons &comparisons);
void registerVideoBenchmarks(Comparisons &comparisons);

/// Part of registerVideoBenchmarks().
void registerFrameBenchmarks(Comparisons &comparisons, const std::shared_ptr<BenchmarkClip> &clip);
