// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Types that more than one block of the SoC uses.

package soc_pkg;

    localparam int unsigned AddressBits = 16;
    localparam int unsigned DataBits = 32;
    localparam int unsigned Blocks = 6;

    typedef logic [AddressBits-1:0] address_t;
    typedef logic [DataBits-1:0] word_t;

    // States of the serial bridge: a command byte, two address bytes, and for a write four data
    // bytes come in; for a read four data bytes go out.
    typedef enum logic [2:0] {
        BridgeCommand,
        BridgeAddress,
        BridgeData,
        BridgeAccess,
        BridgeReply
    } bridge_state_e;

    // Reasons for an interrupt, most urgent first.
    typedef struct packed {
        logic watchdog;
        logic timer;
        logic uart;
        logic gpio;
    } interrupts_t;

endpackage
