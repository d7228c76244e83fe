// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// A FIFO of 2**DEPTH_LOG2 words with the oldest word always on `rdata`. A push into a full FIFO and
// a pull from an empty one are ignored.

module fifo #(
    parameter WIDTH      = 8,
    parameter DEPTH_LOG2 = 4
) (
    input  wire                clk,
    input  wire                rst,
    input  wire                push,
    input  wire [WIDTH-1:0]    wdata,
    input  wire                pull,
    output wire [WIDTH-1:0]    rdata,
    output wire [DEPTH_LOG2:0] level,
    output wire                empty,
    output wire                full
);
    reg [WIDTH-1:0]      words [0:(1 << DEPTH_LOG2)-1];
    reg [DEPTH_LOG2-1:0] head;
    reg [DEPTH_LOG2-1:0] tail;

    wire do_push = push && !full;
    wire do_pull = pull && !empty;

    assign rdata = words[tail];

    always @(posedge clk) begin
        if (do_push)
            words[head] <= wdata;
        if (rst) begin
            head <= 0;
            tail <= 0;
        end else begin
            if (do_push)
                head <= head + 1'b1;
            if (do_pull)
                tail <= tail + 1'b1;
        end
    end

    level_counter #(
        .WIDTH(DEPTH_LOG2)
    ) u_level (
        .clk  (clk),
        .rst  (rst),
        .up   (do_push),
        .down (do_pull),
        .level(level),
        .empty(empty),
        .full (full)
    );
endmodule
