// SPDX-License-Identifier: GPL-3.0-or-later
/// A screen whose list shows no ground of its own but that of the look around it.
ThemedViewModifier {}
