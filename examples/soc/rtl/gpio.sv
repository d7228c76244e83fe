// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// General purpose pins. Each pin has a driver of its own and a debounced input. Pins count from the
// left, as on the board's connector: index 0 is pin 1.
//
//   00  outputs      04  output enables      08  inputs (read)      0C  changes (write 1 clears)

module gpio #(
    parameter int unsigned Pins = 8
) (
    input  logic            clk,
    input  logic            rst,
    input  logic            sel,
    input  logic            we,
    input  logic [7:0]      addr,
    input  logic [31:0]     wdata,
    output logic [31:0]     rdata,
    output logic            ack,
    output logic            irq,
    inout  wire  [0:Pins-1] pins
);
    logic [0:Pins-1] drive;
    logic [0:Pins-1] enable;
    logic [0:Pins-1] level;
    logic [0:Pins-1] previous;
    logic [0:Pins-1] changed;

    wire access = sel && !ack;

    for (genvar i = 0; i < Pins; ++i) begin : g_pin
        logic sampled;

        assign pins[i] = enable[i] ? drive[i] : 1'bz;

        sync2 u_sync (
            .clk,
            .async_in(pins[i]),
            .sync_out(sampled)
        );

        // The first two pins are buttons and bounce for longer.
        debounce #(
            .WIDTH(i < 2 ? 16 : 4)
        ) u_debounce (
            .clk,
            .rst,
            .raw  (sampled),
            .clean(level[i])
        );
    end

    always_ff @(posedge clk) begin
        ack      <= access;
        previous <= level;
        changed  <= changed | (level ^ previous);

        if (rst) begin
            drive   <= '0;
            enable  <= '0;
            changed <= '0;
        end else if (access && we) begin
            unique case (addr)
                8'h00: drive <= wdata[Pins-1:0];
                8'h04: enable <= wdata[Pins-1:0];
                8'h0C: changed <= changed & ~wdata[Pins-1:0];
                default: ;
            endcase
        end
    end

    always_comb
        unique case (addr)
            8'h00: rdata = 32'(drive);
            8'h04: rdata = 32'(enable);
            8'h08: rdata = 32'(level);
            8'h0C: rdata = 32'(changed);
            default: rdata = '0;
        endcase

    assign irq = |changed;
endmodule
