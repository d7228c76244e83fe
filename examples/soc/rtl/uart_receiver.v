// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Receives what uart_transmitter sends. A byte without a stop bit is dropped, and a line that stays
// low for a whole byte is reported as a break.

module uart_receiver (
    input  wire       clk,
    input  wire       rst,
    input  wire       tick16,
    input  wire       line,
    output reg        valid,
    output reg  [7:0] data,
    output reg        framing_error,
    output wire       \break-seen
);
    reg [0:7] shift; // Index 0 holds the bit that came last.
    reg [3:0] bits_left;
    reg [3:0] phase;
    reg       busy;

    wire line_sync;

    sync2 u_sync (
        .clk     (clk),
        .async_in(line),
        .sync_out(line_sync)
    );

    assign \break-seen = framing_error && (shift == 8'h00);

    always @(posedge clk) begin
        valid <= 1'b0;
        if (rst) begin
            busy          <= 1'b0;
            framing_error <= 1'b0;
            data          <= 8'h00;
        end else if (!busy) begin
            // The middle of the start bit is half a bit away.
            busy      <= !line_sync;
            phase     <= 4'd7;
            bits_left <= 4'd9;
        end else if (tick16) begin
            phase <= phase - 1'b1;
            if (phase == 0) begin
                bits_left <= bits_left - 1'b1;
                if (bits_left == 0) begin
                    busy          <= 1'b0;
                    valid         <= line_sync;
                    data          <= shift;
                    framing_error <= !line_sync;
                end else begin
                    shift <= {line_sync, shift[0:6]};
                end
            end
        end
    end
endmodule
