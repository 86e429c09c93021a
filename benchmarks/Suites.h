// SPDX-License-Identifier: Apache-2.0
#pragma once

class Comparisons;

/// Each registers its benchmarks, and what to compare them with.
void registerLookUpBenchmarks(Comparisons &comparisons);
void registerStartUpBenchmarks(Comparisons &comparisons);
void registerShowBenchmarks(Comparisons &comparisons);
