// Carries the headers that nearly every file includes, see LumivaneTargets.cmake.
