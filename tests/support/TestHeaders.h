#pragma once

// Compiled once for all tests of a program: what nearly every test reads, and what takes longest.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>
