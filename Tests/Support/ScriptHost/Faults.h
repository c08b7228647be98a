#pragma once

// Failures of the machine, which the environment asks for:
//
//   FAILING_ALLOCATION=N   the Nth allocation of the library's loading and of all calls; "N+" also
//                          the later ones of that call
//   SHORT_WRITES=N         no write to a file takes more than N bytes, and each third is
//   interrupted

/// Whether the allocations count that are made now; true at first, for the library loads.
extern bool g_isInCall;

long CountedAllocations();

/// Fails the nth allocation from here, once.
void FailAllocation(long nth);
