// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

always @(posedge clk) o <= o + 1; // body
