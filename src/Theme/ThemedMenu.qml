// SPDX-License-Identifier: GPL-3.0-or-later
/// A menu within a component of a look.
StyledMenu {}
