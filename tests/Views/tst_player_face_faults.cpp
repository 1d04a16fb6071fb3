// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/PlayerFaceTest.h"
int main() {}
