// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The serial port as a peripheral, with a FIFO in each direction.
//
//   00  data (write sends, read takes)      04  bit 0: received, bit 1: room to send, bit 2: break

`include "soc_map.vh"

module uart #(
    parameter int unsigned TxDepthLog2 = 4,
    parameter int unsigned RxDepthLog2 = 3
) (
    input  logic        clk,
    input  logic        rst,
    input  logic        sel,
    input  logic        we,
    input  logic [7:0]  addr,
    input  logic [31:0] wdata,
    output logic [31:0] rdata,
    output logic        ack,
    output logic        irq,
    input  logic        rx,
    output logic        tx
);
    logic tick16;
    logic tx_ready, tx_empty, tx_full;
    logic rx_valid, rx_empty, rx_full, rx_error, rx_break;
    logic [7:0] tx_byte, rx_byte, rx_head;
    logic [TxDepthLog2:0] tx_level;
    logic [RxDepthLog2:0] rx_level;

    wire access = sel && !ack;
    wire data_access = access && (addr == 8'h00);

    baud_generator #(
        .DIVISOR(`SOC_BAUD_DIVISOR)
    ) u_baud (
        .clk,
        .rst,
        .\tick*16 (tick16)
    );

    fifo #(
        .WIDTH     (8),
        .DEPTH_LOG2(TxDepthLog2)
    ) u_tx_fifo (
        .clk,
        .rst,
        .push (data_access && we),
        .wdata(wdata[7:0]),
        .pull (tx_ready),
        .rdata(tx_byte),
        .level(tx_level),
        .empty(tx_empty),
        .full (tx_full)
    );

    uart_transmitter u_transmitter (
        .clk,
        .rst,
        .tick16,
        .valid(!tx_empty),
        .data (tx_byte),
        .ready(tx_ready),
        .line (tx)
    );

    uart_receiver u_receiver (
        .clk,
        .rst,
        .tick16,
        .line         (rx),
        .valid        (rx_valid),
        .data         (rx_byte),
        .framing_error(rx_error),
        .\break-seen  (rx_break)
    );

    fifo #(
        .WIDTH     (8),
        .DEPTH_LOG2(RxDepthLog2)
    ) u_rx_fifo (
        .clk,
        .rst,
        .push (rx_valid),
        .wdata(rx_byte),
        .pull (data_access && !we),
        .rdata(rx_head),
        .level(rx_level),
        .empty(rx_empty),
        .full (rx_full)
    );

    // A line that lost a byte keeps its mark until the next reset.
    logic \lost-byte ;

    always_ff @(posedge clk)
        if (rst) \lost-byte <= 1'b0;
        else if (rx_valid && rx_full) \lost-byte <= 1'b1;

    always_ff @(posedge clk) begin
        ack <= access;
        if (addr == 8'h00)
            rdata <= {24'd0, rx_head};
        else
            rdata <= {8'd0, 8'(tx_level), 8'(rx_level), 3'd0, \lost-byte , rx_error, rx_break,
                      !tx_full, !rx_empty};
    end

    assign irq = !rx_empty;
endmodule
