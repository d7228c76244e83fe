// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The beacon: a system on a chip without a processor. Two initiators share one bus, a serial bridge
// for service and a sequencer that plays the light pattern; everything else is a block on that bus.

module beacon_soc
    import soc_pkg::*;
#(
    parameter int unsigned Lamps = 4,
    parameter int unsigned Pins = 8
) (
    input  wire              clk_in,
    input  wire              rst_n,
    input  wire              service_rx,
    output wire              service_tx,
    input  wire              uart_rx,
    output wire              uart_tx,
    inout  wire  [0:Pins-1]  pins,
    output wire  [Lamps-1:0] lamp,
    output logic             alarm
);
    wire clk = clk_in;
    wire rst;

    interrupts_t interrupts;
    interrupts_t interrupt_mask;

    // Goes around once for each reset by the watchdog.
    logic [3:0] \bite.count ;

    wire [1:0] quiet_in = {service_rx, uart_rx};
    wire [1:0] quiet;

    soc_bus_if bridge_bus (.clk);
    soc_bus_if sequencer_bus (.clk);
    soc_bus_if main_bus (.clk);

    reset_sync u_reset (
        .clk,
        .rst_n_async(rst_n),
        .rst
    );

    // Both serial lines are idle high; the pattern plays while neither has been used for a while.
    debounce #(
        .WIDTH(12)
    ) u_quiet [1:0] (
        .clk,
        .rst,
        .raw  (quiet_in),
        .clean(quiet)
    );

    serial_bridge u_bridge (
        .rst,
        .rx (service_rx),
        .tx (service_tx),
        .bus(bridge_bus)
    );

    beacon_sequencer #(
        .Lamps(Lamps)
    ) u_sequencer (
        .rst,
        .enable(&quiet),
        .bus   (sequencer_bus)
    );

    bus_arbiter u_arbiter (
        .rst,
        .first (bridge_bus),
        .second(sequencer_bus),
        .shared(main_bus)
    );

    peripherals #(
        .Lamps(Lamps),
        .Pins (Pins)
    ) u_io (
        .rst,
        .bus(main_bus),
        .interrupts,
        .uart_rx,
        .uart_tx,
        .pins,
        .lamp
    );

    assign interrupt_mask = '1;
    assign alarm = |(interrupts & interrupt_mask);

    always_ff @(posedge clk)
        if (rst) \bite.count <= '0;
        else if (interrupts.watchdog) \bite.count <= \bite.count + 1'b1;
endmodule
