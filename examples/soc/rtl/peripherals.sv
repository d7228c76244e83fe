// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// All blocks below the decoder, and the interrupts that they raise.

module peripherals
    import soc_pkg::*;
#(
    parameter int unsigned Lamps = 4,
    parameter int unsigned Pins = 8
) (
    input  logic             rst,
    soc_bus_if.target        bus,
    output interrupts_t      interrupts,
    input  logic             uart_rx,
    output logic             uart_tx,
    inout  wire  [0:Pins-1]  pins,
    output logic [Lamps-1:0] lamp
);
    logic [Blocks-1:0]               sel;
    logic [Blocks-1:0]               block_ack;
    logic [Blocks-1:0][DataBits-1:0] block_rdata;

    wire       clk = bus.clk;
    wire       we = bus.we;
    wire [7:0] offset = bus.addr[7:0];

    bus_decoder u_decoder (
        .rst,
        .bus,
        .sel,
        .block_ack,
        .block_rdata
    );

    scratch_ram #(
        .ADDRESS_BITS(8)
    ) u_ram (
        .clk,
        .sel  (sel[0]),
        .we,
        .addr (offset),
        .wdata(bus.wdata),
        .rdata(block_rdata[0]),
        .ack  (block_ack[0])
    );

    uart u_uart (
        .clk,
        .rst,
        .sel  (sel[1]),
        .we,
        .addr (offset),
        .wdata(bus.wdata),
        .rdata(block_rdata[1]),
        .ack  (block_ack[1]),
        .irq  (interrupts.uart),
        .rx   (uart_rx),
        .tx   (uart_tx)
    );

    gpio #(
        .Pins(Pins)
    ) u_gpio (
        .clk,
        .rst,
        .sel  (sel[2]),
        .we,
        .addr (offset),
        .wdata(bus.wdata),
        .rdata(block_rdata[2]),
        .ack  (block_ack[2]),
        .irq  (interrupts.gpio),
        .pins
    );

    timer #(
        .WIDTH(24)
    ) u_timer (
        .clk,
        .rst,
        .sel  (sel[3]),
        .we,
        .addr (offset),
        .wdata(bus.wdata),
        .rdata(block_rdata[3]),
        .ack  (block_ack[3]),
        .irq  (interrupts.timer)
    );

    pwm #(
        .Channels(Lamps)
    ) u_pwm (
        .clk,
        .rst,
        .sel  (sel[4]),
        .we,
        .addr (offset),
        .wdata(bus.wdata),
        .rdata(block_rdata[4]),
        .ack  (block_ack[4]),
        .lamp
    );

    watchdog u_watchdog (
        .clk,
        .rst,
        .sel  (sel[5]),
        .we,
        .addr (offset),
        .wdata(bus.wdata),
        .rdata(block_rdata[5]),
        .ack  (block_ack[5]),
        .bite (interrupts.watchdog)
    );
endmodule
