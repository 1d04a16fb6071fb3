// SPDX-License-Identifier: GPL-3.0-or-later
/// The ground of a row in the look of what is around it.
ThemedRowModifier {}
