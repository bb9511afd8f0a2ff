#pragma once

// Compiled once for all tests with windows.
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include "TestHeaders.h"
