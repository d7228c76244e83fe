// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`define CORE_BODY wire from_macro; assign from_macro = clk;
