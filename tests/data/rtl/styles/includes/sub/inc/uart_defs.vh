// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`define UART_W 3
